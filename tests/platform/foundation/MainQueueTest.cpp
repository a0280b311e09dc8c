#include "platform/foundation/MainQueue.h"

#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <QThread>
#include <QTimer>

#include <gmock/gmock.h>

#include <memory>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using tljira::MainQueue;

void add(std::function<void()> operation)
{
    MainQueue::instance().addOperation(std::move(operation));
}

TEST(MainQueue, runsInALaterTurn)
{
    bool hasRun = false;
    add([&] { hasRun = true; });
    EXPECT_FALSE(hasRun);
    EXPECT_TRUE(tests::waitUntil([&] { return hasRun; }));
}

TEST(MainQueue, anOperationAddedByAnotherRunsOneTurnLater)
{
    std::vector<int> order;
    add([&] {
        add([&] { order.push_back(2); });
        order.push_back(1);
    });
    ASSERT_TRUE(tests::waitUntil([&] { return !order.empty(); }));
    EXPECT_THAT(order, ElementsAre(1));
    ASSERT_TRUE(tests::waitUntil([&] { return order.size() == 2; }));
    EXPECT_THAT(order, ElementsAre(1, 2));
}

TEST(MainQueue, keepsTheOrder)
{
    std::vector<int> order;
    for (int number = 0; number < 1000; ++number)
        add([&order, number] { order.push_back(number); });
    ASSERT_TRUE(tests::waitUntil([&] { return order.size() == 1000; }));
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(MainQueue, takesOperationsFromEveryThreadAndRunsThemOnTheMainThread)
{
    constexpr int threadCount = 4;
    constexpr int perThread = 500;
    std::vector<std::vector<int>> orders(threadCount);
    int ran = 0;
    bool isMainThread = true;
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < threadCount; ++thread)
        threads.emplace_back([&, thread] {
            for (int number = 0; number < perThread; ++number)
                add([&, thread, number] {
                    orders[thread].push_back(number);
                    isMainThread = isMainThread && QThread::currentThread() == QCoreApplication::instance()->thread();
                    ++ran;
                });
        });
    ASSERT_TRUE(tests::waitUntil([&] { return ran == threadCount * perThread; }));
    EXPECT_TRUE(isMainThread);
    for (const std::vector<int>& order : orders) {
        EXPECT_EQ(order.size(), perThread);
        EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    }
}

TEST(MainQueue, whatAThreadWroteBeforeAddingIsSeenByTheOperation)
{
    int written = 0;
    int seen = 0;
    std::jthread([&] {
        written = 42;
        add([&] { seen = written; });
    }).join();
    ASSERT_TRUE(tests::waitUntil([&] { return seen != 0; }));
    EXPECT_EQ(seen, 42);
}

TEST(MainQueue, goesOnInsideAnEventLoopThatAnOperationRuns)
{
    std::vector<QString> order;
    add([&] {
        QEventLoop loop;
        add([&] {
            order.push_back(QStringLiteral("inner"));
            loop.quit();
        });
        loop.exec();
        order.push_back(QStringLiteral("outer"));
    });
    add([&] { order.push_back(QStringLiteral("next")); });
    ASSERT_TRUE(tests::waitUntil([&] { return order.size() == 3; }));
    EXPECT_THAT(order, ElementsAre(QStringLiteral("next"), QStringLiteral("inner"), QStringLiteral("outer")));
}

TEST(MainQueue, whatWaitsAlreadyRunsInsideAnEventLoopThatAnOperationRuns)
{
    std::vector<QString> order;
    QEventLoop loop;
    QTimer patience;
    patience.setSingleShot(true);
    QObject::connect(&patience, &QTimer::timeout, &loop, [&] { loop.exit(1); });
    int code = -1;
    add([&] {
        patience.start(20'000);
        code = loop.exec();
        order.push_back(QStringLiteral("outer"));
    });
    add([&] {
        order.push_back(QStringLiteral("next"));
        loop.quit();
    });
    ASSERT_TRUE(tests::waitUntil([&] { return order.size() == 2; }));
    EXPECT_THAT(order, ElementsAre(QStringLiteral("next"), QStringLiteral("outer")));
    EXPECT_EQ(code, 0);
}

TEST(MainQueue, letsOtherEventsHaveTheirTurn)
{
    int ran = 0;
    int ranWhenTimerCame = -1;
    std::function<void()> again = [&] {
        if (++ran < 100000 && ranWhenTimerCame < 0)
            add(again);
    };
    QTimer::singleShot(0, [&] { ranWhenTimerCame = ran; });
    add(again);
    ASSERT_TRUE(tests::waitUntil([&] { return ranWhenTimerCame >= 0; }));
    EXPECT_LT(ranWhenTimerCame, 100);
}

TEST(MainQueue, releasesAnOperationRightAfterItRanOnTheMainThread)
{
    struct Token
    {
        QThread*& releasedOn;
        explicit Token(QThread*& thread)
            : releasedOn(thread)
        {
        }
        ~Token() { releasedOn = QThread::currentThread(); }
    };
    QThread* releasedOn = nullptr;
    QThread* releasedBeforeNext = nullptr;
    bool isOver = false;
    std::jthread([&] {
        add([token = std::make_shared<Token>(releasedOn)] {});
        add([&] {
            releasedBeforeNext = releasedOn;
            isOver = true;
        });
    }).join();
    ASSERT_TRUE(tests::waitUntil([&] { return isOver; }));
    EXPECT_EQ(releasedBeforeNext, QCoreApplication::instance()->thread());
}

TEST(MainQueue, anEmptyOperationDoesNothing)
{
    bool hasRun = false;
    add({});
    add([&] { hasRun = true; });
    EXPECT_TRUE(tests::waitUntil([&] { return hasRun; }));
}

QString outputOf(const QString& scene)
{
    QProcess process;
    process.start(QStringLiteral(MAIN_QUEUE_LIFE), {scene});
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardError(), QByteArray());
    return QString::fromUtf8(process.readAllStandardOutput());
}

TEST(MainQueue, operationsWaitForTheApplicationObject)
{
    EXPECT_EQ(outputOf(QStringLiteral("before")), QStringLiteral("application\nfirst\nsecond\n"));
}

TEST(MainQueue, whatIsLeftWhenTheApplicationObjectGoesIsDroppedUnrun)
{
    EXPECT_EQ(outputOf(QStringLiteral("queued")), QStringLiteral("released\n"));
}

TEST(MainQueue, servesALaterApplicationObjectToo)
{
    EXPECT_EQ(outputOf(QStringLiteral("twice")), QStringLiteral("in the second\n"));
}

TEST(MainQueue, aProcessMayExitWhileOperationsAreBeingAdded)
{
    EXPECT_EQ(outputOf(QStringLiteral("exit")), QStringLiteral("exiting\n"));
}

} // namespace
