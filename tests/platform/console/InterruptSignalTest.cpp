#include "platform/console/InterruptSignal.h"

#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <csignal>
#include <vector>

namespace {

using testing::ElementsAre;
using tljira::console::InterruptSignal;

TEST(InterruptSignal, HandsSignalsToTheEventLoopInTheirOrder)
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

TEST(InterruptSignal, KeepsSignalsUntilSomebodyHandlesThem)
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

TEST(InterruptSignal, LeavesIgnoredSignalsIgnored)
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

} // namespace
