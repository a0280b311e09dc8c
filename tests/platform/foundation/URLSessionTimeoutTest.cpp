#include "tests/platform/foundation/SessionTest.h"

#include <QElapsedTimer>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;
using namespace std::chrono_literals;

/// The time-out of a request is one without a byte moved, in any phase.
class URLSessionTimeoutTest : public tests::SessionTest
{
protected:
    static constexpr double timeout = 0.5;

    void expectTimeout(const tljira::URLRequest& request)
    {
        events.clear();
        QElapsedTimer timer;
        timer.start();
        run(request);
        EXPECT_GE(timer.elapsed(), 490);
        EXPECT_THAT(events, ElementsAre("no response", "end -1001"));
        EXPECT_EQ(error->localizedDescription(), QStringLiteral("The request timed out."));
        server.release();
    }
};

TEST_F(URLSessionTimeoutTest, endsARequestWhoseAnswerStops)
{
    for (const Point point :
         {Point::responseHead(0), Point::responseHead(10), Point::responseBody(0), Point::responseBody(500)}) {
        server.misbehave(Match::next(), Fault().status(200, std::string(1000, 'x')).hold(point));
        expectTimeout(requestFor("x", timeout));
    }
}

TEST_F(URLSessionTimeoutTest, endsARequestWhoseBodyIsNotTaken)
{
    server.misbehave(Match::next(), Fault().status(200, "").hold(Point::requestBody(0)));
    tljira::URLRequest request = requestFor("x", timeout);
    request.HTTPMethod = QStringLiteral("POST");
    request.HTTPBody = tljira::Data(QByteArray(32 << 20, 'x'));
    expectTimeout(request);
}

TEST_F(URLSessionTimeoutTest, endsADownloadThatStopsAndLeavesNoFile)
{
    server.misbehave(Match::next(), Fault().status(200, std::string(1000, 'x')).hold(Point::responseBody(500)));
    session->downloadTaskWithRequest(requestFor("x", timeout))->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    EXPECT_THAT(events, ElementsAre("end -1001"));
}

TEST_F(URLSessionTimeoutTest, takesAnyNumberOfSecondsForNever)
{
    for (const double never : {1e10, 1e300, std::numeric_limits<double>::infinity()}) {
        server.misbehave(Match::next(), Fault().status(200, "x").delay(50ms));
        events.clear();
        run(requestFor("x", never));
        EXPECT_THAT(events, ElementsAre("200", "end")) << never;
    }
}

TEST_F(URLSessionTimeoutTest, neverEndsAnAnswerThatDrips)
{
    constexpr double patience = 5;
    server.misbehave(Match::next(), Fault().status(200, std::string(60, 'x')).drip(1, 100ms));
    QElapsedTimer timer;
    timer.start();
    run(requestFor("x", patience));
    EXPECT_GE(timer.elapsed(), 1000 * patience);
    EXPECT_THAT(events, ElementsAre("200", "end"));
    EXPECT_EQ(body, QByteArray(60, 'x'));
}

TEST_F(URLSessionTimeoutTest, neverEndsABodyThatIsTakenSlowly)
{
    // The end of the body waits in the buffers on the way, so the time-out has to be longer than it takes to empty
    // those.
    constexpr double patience = 10;
    server.misbehave(Match::next(), Fault().status(200, "").sip(1 << 18, 50ms));
    tljira::URLRequest request = requestFor("x", patience);
    request.HTTPMethod = QStringLiteral("POST");
    request.HTTPBody = tljira::Data(QByteArray(64 << 20, 'x'));
    QElapsedTimer timer;
    timer.start();
    run(request);
    EXPECT_GE(timer.elapsed(), 1000 * patience);
    EXPECT_THAT(events, ElementsAre("200", "end"));
}

TEST_F(URLSessionTimeoutTest, isEachRequestsOwn)
{
    server.misbehave(Match(), Fault().status(200, "").hold(Point::responseHead(0)));
    dataTask(requestFor("patient", 60))->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    dataTask(requestFor("hurried", timeout))->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    EXPECT_THAT(events, ElementsAre("no response", "end -1001"));
    server.release();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 2; }));
    EXPECT_EQ(events.at(2), "200");
}

} // namespace
