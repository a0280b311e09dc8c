#include "platform/foundation/GlobalQueue.h"

#include "platform/foundation/MainQueue.h"
#include "tests/support/WaitUntil.h"

#include <QThread>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

using tljira::GlobalQueue;
using tljira::MainQueue;

TEST(GlobalQueueTest, RunsAnOperationOnAnotherThread)
{
    const QThread* const mainThread = QThread::currentThread();
    const QThread* other = nullptr;
    bool hasRun = false;
    GlobalQueue::instance().addOperation([&] {
        other = QThread::currentThread();
        MainQueue::instance().addOperation([&] { hasRun = true; });
    });
    ASSERT_TRUE(tests::waitUntil([&] { return hasRun; }));
    EXPECT_NE(other, mainThread);
}

TEST(GlobalQueueTest, RunsEachOperationOnce)
{
    constexpr int operations = 1000;
    std::vector<int> runs(operations);
    int ended = 0;
    for (int number = 0; number < operations; ++number) {
        GlobalQueue::instance().addOperation([&runs, &ended, number] {
            ++runs[static_cast<std::size_t>(number)];
            MainQueue::instance().addOperation([&ended] { ++ended; });
        });
    }
    ASSERT_TRUE(tests::waitUntil([&] { return ended == operations; }));
    EXPECT_EQ(runs, std::vector<int>(operations, 1));
}

TEST(GlobalQueueTest, ReleasesAnOperationThatHasRun)
{
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = held;
    GlobalQueue::instance().addOperation([held = std::move(held)] {});
    EXPECT_TRUE(tests::waitUntil([&] { return watch.expired(); }));
}

} // namespace
