#include "tests/platform/foundation/SessionTest.h"

#include <QFile>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;

class URLSessionTaskTest : public tests::SessionTest
{
};

TEST_F(URLSessionTaskTest, tellsItsCompletionAndThenTheDelegate)
{
    server.misbehave(Match(), Fault().status(200, "body"));
    run(requestFor("x"));
    EXPECT_THAT(events, ElementsAre("200", "end"));
    EXPECT_EQ(body, QByteArray("body"));
}

TEST_F(URLSessionTaskTest, doesNothingBeforeItIsResumed)
{
    const auto task = dataTask(requestFor("x"));
    tests::drainMainQueue();
    EXPECT_EQ(server.connectionCount(), 0u);
    EXPECT_TRUE(events.empty());
}

TEST_F(URLSessionTaskTest, runsOnceHoweverOftenItIsResumed)
{
    server.misbehave(Match(), Fault().status(200, ""));
    const auto task = dataTask(requestFor("x"));
    task->resume();
    task->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    task->resume();
    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("200", "end"));
    EXPECT_EQ(server.requestCount(), 1u);
}

TEST_F(URLSessionTaskTest, endsWhenItIsCancelledBeforeItStarted)
{
    const auto task = dataTask(requestFor("x"));
    task->cancel();
    EXPECT_TRUE(events.empty());
    task->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("no response", "end -999"));
    EXPECT_EQ(server.connectionCount(), 0u);
    EXPECT_EQ(error->localizedDescription(), QStringLiteral("cancelled"));
}

TEST_F(URLSessionTaskTest, ofADownloadEndsWhenItIsCancelledBeforeItStarted)
{
    session->downloadTaskWithRequest(requestFor("x"))->cancel();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("end -999"));
}

TEST_F(URLSessionTaskTest, endsOnceWhenItIsCancelledUnderWayAndAgain)
{
    server.misbehave(Match(), Fault().status(200, "body").hold(Point::responseBody(2)));
    const auto task = dataTask(requestFor("x"));
    task->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    task->cancel();
    task->cancel();
    EXPECT_TRUE(events.empty());
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    task->cancel();
    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("no response", "end -999"));
}

TEST_F(URLSessionTaskTest, isNotHarmedByACancelAfterItsEnd)
{
    server.misbehave(Match(), Fault().status(200, "body"));
    const auto task = dataTask(requestFor("x"));
    task->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    task->cancel();
    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("200", "end"));
}

TEST_F(URLSessionTaskTest, hasEndedWhenItsEndIsReportedNotWhenItIsCancelled)
{
    server.misbehave(Match(), Fault().status(200, "body").hold(Point::responseBody(2)));
    const auto task = dataTask(requestFor("x"));
    EXPECT_FALSE(task->hasEnded());
    task->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    EXPECT_FALSE(task->hasEnded());
    task->cancel();
    EXPECT_FALSE(task->isRunning());
    EXPECT_FALSE(task->hasEnded());
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    EXPECT_TRUE(task->hasEnded());
}

TEST_F(URLSessionTaskTest, ofADownloadHandsOverAFileForTheTimeOfOneCall)
{
    server.misbehave(Match(), Fault().status(404, "body"));
    session->downloadTaskWithRequest(requestFor("x"))->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    EXPECT_THAT(events, ElementsAre("file", "end"));
    EXPECT_FALSE(location.isEmpty());
    EXPECT_FALSE(QFile::exists(location));
}

TEST_F(URLSessionTaskTest, reportsBytesThatAddUp)
{
    constexpr qint64 size = 16 << 20;
    server.misbehave(Match(), Fault().status(200, std::string(size, 'x')));
    tljira::URLRequest request = requestFor("x");
    request.HTTPMethod = QStringLiteral("POST");
    request.HTTPBody = tljira::Data(QByteArray(size, 'y'));
    session->downloadTaskWithRequest(request)->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    ASSERT_FALSE(sent.empty());
    EXPECT_EQ(sentIncrements, size);
    EXPECT_EQ(sent.back(), std::make_pair(size, size));
    ASSERT_FALSE(written.empty());
    EXPECT_EQ(writtenIncrements, size);
    EXPECT_EQ(written.back(), std::make_pair(size, size));
}

TEST_F(URLSessionTaskTest, reportsWhatCameJustBeforeAStall)
{
    constexpr qint64 size = 8 << 20;
    constexpr qint64 beforeTheStall = (6 << 20) + 1;
    server.misbehave(Match(), Fault().status(200, std::string(size, 'x')).hold(Point::responseBody(beforeTheStall)));
    const auto task = session->downloadTaskWithRequest(requestFor("x"));
    task->resume();
    EXPECT_TRUE(
        tests::waitUntil([&] { return !written.empty() && written.back() == std::make_pair(beforeTheStall, size); }));
    EXPECT_EQ(ends, 0u);
    task->cancel();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
}

TEST_F(URLSessionTaskTest, saysNothingMoreWhenItsSessionIsGone)
{
    server.misbehave(Match(), Fault().status(200, "body").hold(Point::responseBody(2)));
    const auto task = dataTask(requestFor("x"));
    task->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    session.reset();
    EXPECT_TRUE(task->hasEnded());
    server.release();
    task->cancel();
    EXPECT_TRUE(tests::waitUntil([this] { return server.openConnectionCount() == 0; }));
    tests::drainMainQueue();
    EXPECT_TRUE(events.empty());
}

} // namespace
