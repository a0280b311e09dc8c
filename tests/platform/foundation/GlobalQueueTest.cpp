#include "platform/foundation/GlobalQueue.h"

#include "platform/foundation/MainQueue.h"
#include "tests/kit/HeldGlobalQueue.h"
#include "tests/kit/WaitUntil.h"

#include <QFile>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <gtest/gtest.h>

#include <memory>
#include <sys/resource.h>
#include <vector>

namespace {

using tljira::GlobalQueue;
using tljira::MainQueue;

TEST(GlobalQueueTest, runsAnOperationOnAnotherThread)
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

TEST(GlobalQueueTest, runsEachOperationOnce)
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

TEST(GlobalQueueTest, releasesAnOperationThatHasRun)
{
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = held;
    GlobalQueue::instance().addOperation([held = std::move(held)] {});
    EXPECT_TRUE(tests::waitUntil([&] { return watch.expired(); }));
}

TEST(GlobalQueueTest, goesOnWhileQtsThreadPoolIsHeld)
{
    QThreadPool& pool = *QThreadPool::globalInstance();
    QSemaphore freed;
    QSemaphore held;
    for (int thread = 0; thread < pool.maxThreadCount(); ++thread) {
        pool.start([&] {
            held.release();
            freed.acquire();
        });
    }
    held.acquire(pool.maxThreadCount());
    bool hasRun = false;
    GlobalQueue::instance().addOperation([&] { MainQueue::instance().addOperation([&] { hasRun = true; }); });
    EXPECT_TRUE(tests::waitUntil([&] { return hasRun; }));
    freed.release(pool.maxThreadCount());
    pool.waitForDone();
}

TEST(GlobalQueueTest, takesNothingOfQtsThreadPool)
{
    const tests::HeldGlobalQueue held;
    EXPECT_EQ(QThreadPool::globalInstance()->activeThreadCount(), 0);
}

TEST(GlobalQueueTest, runsWhatWaitedForAThread)
{
    bool hasRun = false;
    tests::HeldGlobalQueue held;
    GlobalQueue::instance().addOperation([&] { MainQueue::instance().addOperation([&] { hasRun = true; }); });
    tests::drainMainQueue();
    EXPECT_FALSE(hasRun);
    held.letGo();
    EXPECT_TRUE(tests::waitUntil([&] { return hasRun; }));
}

// The sanitizers' own memory leaves no room for a bound.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
/// Leaves the process no memory for the stack of another thread.
class WithoutRoomForThreads
{
public:
    WithoutRoomForThreads()
    {
        QFile status(QStringLiteral("/proc/self/statm"));
        EXPECT_TRUE(status.open(QIODevice::ReadOnly));
        const auto pages = status.readAll().split(' ').value(0).toULongLong();
        EXPECT_GT(pages, 0U);
        EXPECT_EQ(getrlimit(RLIMIT_AS, &m_before), 0);
        rlimit bound = m_before;
        bound.rlim_cur = pages * 4096 + (std::size_t(4) << 20);
        EXPECT_EQ(setrlimit(RLIMIT_AS, &bound), 0);
    }
    ~WithoutRoomForThreads() { setrlimit(RLIMIT_AS, &m_before); }
    WithoutRoomForThreads(const WithoutRoomForThreads&) = delete;
    WithoutRoomForThreads& operator=(const WithoutRoomForThreads&) = delete;

private:
    rlimit m_before{};
};

TEST(GlobalQueueTest, usesTheMainThreadWhereThereIsNoOther)
{
    const QThread* runner = nullptr;
    const WithoutRoomForThreads tight;
    GlobalQueue::instance().addOperation([&] { runner = QThread::currentThread(); });
    EXPECT_EQ(runner, nullptr);
    EXPECT_TRUE(tests::waitUntil([&] { return runner != nullptr; }));
    EXPECT_EQ(runner, QThread::currentThread());
}
#endif

} // namespace
