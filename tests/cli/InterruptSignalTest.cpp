#include "cli/InterruptSignal.h"

#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <csignal>
#include <poll.h>
#include <vector>

namespace {

using cli::InterruptSignal;
using testing::ElementsAre;

bool isReadable(int descriptor)
{
    pollfd state = {descriptor, POLLIN, 0};
    return ::poll(&state, 1, 0) == 1;
}

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
    EXPECT_FALSE(isReadable(interrupts.descriptor()));
    ::raise(SIGINT);
    EXPECT_TRUE(isReadable(interrupts.descriptor()));
    std::vector<int> numbers;
    interrupts.setHandler([&](int number) { numbers.push_back(number); });
    EXPECT_TRUE(tests::waitUntil([&] { return numbers.size() == 1; }));
    EXPECT_FALSE(isReadable(interrupts.descriptor()));
}

TEST(InterruptSignal, LeavesIgnoredSignalsIgnored)
{
    std::signal(SIGHUP, SIG_IGN);
    InterruptSignal interrupts;
    ::raise(SIGHUP);
    EXPECT_FALSE(isReadable(interrupts.descriptor()));
}

} // namespace
