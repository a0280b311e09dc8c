#include "platform/console/InterruptSignal.h"

#include "tests/kit/WaitUntil.h"

#include <gmock/gmock.h>

#include <csignal>
#include <unistd.h>
#include <vector>

namespace {

using testing::ElementsAre;
using tljira::console::InterruptSignal;

TEST(InterruptSignal, handsSignalsToTheEventLoopInTheirOrder)
{
    InterruptSignal interrupts;
    std::vector<int> numbers;
    interrupts.setHandler([&](int number) { numbers.push_back(number); });
    ::raise(SIGINT);
    ::raise(SIGTERM);
    ::raise(SIGHUP);
    EXPECT_THAT(numbers, ElementsAre());
    EXPECT_TRUE(tests::waitUntil([&] { return numbers.size() == 3; }));
    EXPECT_THAT(numbers, ElementsAre(SIGINT, SIGTERM, SIGHUP));
}

TEST(InterruptSignal, keepsSignalsUntilSomebodyHandlesThem)
{
    InterruptSignal interrupts;
    EXPECT_FALSE(interrupts.isPending());
    ::raise(SIGINT);
    EXPECT_TRUE(interrupts.isPending());
    std::vector<int> numbers;
    interrupts.setHandler([&](int number) { numbers.push_back(number); });
    EXPECT_TRUE(tests::waitUntil([&] { return numbers.size() == 1; }));
    EXPECT_FALSE(interrupts.isPending());
}

TEST(InterruptSignal, leavesIgnoredSignalsIgnored)
{
    std::signal(SIGHUP, SIG_IGN);
    {
        InterruptSignal interrupts;
        ::raise(SIGHUP);
        EXPECT_FALSE(interrupts.isPending());
    }
    EXPECT_EQ(std::signal(SIGHUP, SIG_IGN), SIG_IGN);
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_DFL);
}

TEST(InterruptSignal, endsAProcessThatDoesNotHear)
{
    const auto beDeaf = [] {
        const InterruptSignal interrupts;
        ::raise(SIGINT);
        for (int second = 0; second < 60; ++second)
            ::sleep(1);
    };
    EXPECT_EXIT(beDeaf(), testing::ExitedWithCode(130), "");
}

TEST(InterruptSignal, leavesAProcessAloneThatHasHeard)
{
    const auto hear = [] {
        InterruptSignal interrupts;
        int heard = 0;
        interrupts.setHandler([&](int) { ++heard; });
        for (int round = 1; round <= 2; ++round) {
            ::raise(SIGTERM);
            if (!tests::waitUntil([&] { return heard == round; }))
                ::_exit(1);
        }
        if (::alarm(0) != 0)
            ::_exit(2);
        ::_exit(7);
    };
    EXPECT_EXIT(hear(), testing::ExitedWithCode(7), "");
}

} // namespace
