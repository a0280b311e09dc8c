#include "constants/JAConstants.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "platform/foundation/loading/URLSessionDelegate.h"
#include "tests/client/ClientTest.h"

#include <QCoreApplication>
#include <QThread>

namespace {

using standin::Fault;
using standin::Match;
using testing::ElementsAre;

class JAControllerRequestsTest : public tests::ClientTest
{
protected:
    std::optional<QString> myself() const { return client->url(kCurrentUserPath); }

    void answer(int status, const std::string& text) { server.misbehave(Match(), Fault().status(status, text)); }

    standin::RecordedRequest get()
    {
        events.clear();
        client->sendGetRequest(myself(), requestCallBack());
        EXPECT_TRUE(waitForEvents(1));
        return server.lastRequest();
    }
};

TEST_F(JAControllerRequestsTest, sendsEachMethodWithJSONHeaders)
{
    client->sendGetRequest(myself(), requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    client->sendDeleteRequest(myself(), requestCallBack());
    ASSERT_TRUE(waitForEvents(2));
    client->sendPostRequest(myself(), std::nullopt, std::nullopt, requestCallBack());
    ASSERT_TRUE(waitForEvents(3));

    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0].method, "GET");
    EXPECT_EQ(requests[1].method, "DELETE");
    EXPECT_EQ(requests[2].method, "POST");
    for (const auto& request : requests) {
        EXPECT_EQ(request.target, "/rest/api/2/myself");
        EXPECT_EQ(request.header("Host"), "jira.example.test");
        EXPECT_EQ(request.header("Content-Type"), "application/json");
        EXPECT_EQ(request.header("Accept"), "application/json");
        EXPECT_EQ(request.headerCount("Expect"), 0);
        EXPECT_EQ(request.headerCount("Cookie"), 0);
        EXPECT_EQ(request.body, "");
    }
}

TEST_F(JAControllerRequestsTest, givesEachMethodAMinuteAndTheUsualCaching)
{
    class Listener : public tljira::URLSessionDelegate
    {
    public:
        void didCompleteWithError(const std::shared_ptr<tljira::URLSessionTask>& task,
                                  const std::optional<tljira::Error>&) override
        {
            requests.push_back(task->originalRequest());
        }
        std::vector<tljira::URLRequest> requests;
    };
    const auto listener = std::make_shared<Listener>();
    client->setSession(tljira::URLSession::sessionWithConfiguration(client->session()->configuration(), listener));
    client->sendGetRequest(myself(), requestCallBack());
    client->sendDeleteRequest(myself(), requestCallBack());
    client->sendPostRequest(myself(), std::nullopt, std::nullopt, requestCallBack());
    ASSERT_TRUE(waitForEvents(3));
    ASSERT_EQ(listener->requests.size(), 3u);
    for (const tljira::URLRequest& request : listener->requests) {
        EXPECT_EQ(request.timeoutInterval, 60.0);
        EXPECT_EQ(request.cachePolicy, tljira::URLRequestCachePolicy::UseProtocolCachePolicy);
        EXPECT_TRUE(request.HTTPShouldHandleCookies);
    }
}

TEST_F(JAControllerRequestsTest, handsOverBodyErrorAndResponse)
{
    server.misbehave(Match(), Fault().status(200, "answer", "text/plain").header("X-Own", "yes"));
    get();
    EXPECT_THAT(events, ElementsAre("200, no error"));
    EXPECT_EQ(body, QByteArray("answer"));
    EXPECT_EQ(response->valueForHTTPHeaderField(QStringLiteral("x-own")), QStringLiteral("yes"));
    EXPECT_EQ(response->url, QStringLiteral("http://jira.example.test/rest/api/2/myself"));
}

TEST_F(JAControllerRequestsTest, takesStatusesOfErrorsForAnswers)
{
    for (int status : {401, 403, 404, 429, 500, 503}) {
        server.behave();
        answer(status, "no");
        get();
        EXPECT_THAT(events, ElementsAre(std::to_string(status) + ", no error"));
        EXPECT_EQ(body, QByteArray("no"));
    }
}

TEST_F(JAControllerRequestsTest, hasAnEmptyBodyForAnAnswerWithoutOne)
{
    answer(204, "");
    get();
    EXPECT_THAT(events, ElementsAre("204, no error"));
    EXPECT_EQ(body, QByteArray());
}

TEST_F(JAControllerRequestsTest, postsItsParametersAsCompactJSON)
{
    const QJsonObject parametres{{QStringLiteral("a"), QStringLiteral("Größe \"x\"")}, {QStringLiteral("b"), 1}};
    client->sendPostRequest(myself(), parametres, std::nullopt, requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(server.lastRequest().body, R"({"a":"Größe \"x\"","b":1})");
}

TEST_F(JAControllerRequestsTest, postsAnEmptyObjectWhereThereAreNoParametersInIt)
{
    client->sendPostRequest(myself(), QJsonObject(), std::nullopt, requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(server.lastRequest().body, "{}");
}

TEST_F(JAControllerRequestsTest, addsHeaderFieldsToThoseThatAreThere)
{
    const JAController::HTTPFields fields{{QStringLiteral("Content-Type"), QStringLiteral("text/plain")},
                                          {QStringLiteral("X-Own"), QStringLiteral("yes")}};
    client->sendPostRequest(myself(), std::nullopt, fields, requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    const auto request = server.lastRequest();
    EXPECT_EQ(request.header("Content-Type"), "application/json,text/plain");
    EXPECT_EQ(request.headerCount("Content-Type"), 1);
    EXPECT_EQ(request.header("X-Own"), "yes");
}

TEST_F(JAControllerRequestsTest, carriesTheSavedSession)
{
    saveSession("N", "V");
    client->sendGetRequest(myself(), requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    client->sendDeleteRequest(myself(), requestCallBack());
    ASSERT_TRUE(waitForEvents(2));
    client->sendPostRequest(myself(), std::nullopt, std::nullopt, requestCallBack());
    ASSERT_TRUE(waitForEvents(3));
    ASSERT_EQ(server.requests().size(), 3U);
    for (const auto& request : server.requests()) {
        EXPECT_EQ(request.header("Cookie"), "N=V");
        EXPECT_EQ(request.headerCount("Cookie"), 1);
    }
}

TEST_F(JAControllerRequestsTest, sendsTheServersOwnCookiesBesideTheSavedSessionInOneLine)
{
    saveSession("N", "V");
    server.misbehave(Match::next(), Fault().status(200, "").header("Set-Cookie", "own=1; Path=/"));
    get();
    const auto request = get();
    EXPECT_EQ(request.headerCount("Cookie"), 1);
    EXPECT_THAT(request.header("Cookie"), testing::AnyOf("N=V; own=1", "own=1; N=V"));
}

TEST_F(JAControllerRequestsTest, sendsACookieThatIsSavedAndInTheJarOnce)
{
    saveSession("N", "V");
    server.misbehave(Match::next(), Fault().status(200, "").header("Set-Cookie", "N=V; Path=/"));
    get();
    EXPECT_EQ(get().header("Cookie"), "N=V");
}

TEST_F(JAControllerRequestsTest, neverCallsBackInsideTheCallThatSends)
{
    int calls = 0;
    bool isSending = true;
    const auto callBack = [&](const auto&, const auto&, const auto&) {
        EXPECT_FALSE(isSending);
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        ++calls;
    };
    client->sendGetRequest(myself(), callBack);
    client->sendDeleteRequest(std::nullopt, callBack);
    client->sendPostRequest(QStringLiteral("no address"), std::nullopt, std::nullopt, callBack);
    QThread::msleep(200); // Time enough for answers; the main thread is busy here and must not be given one.
    EXPECT_EQ(calls, 0);
    isSending = false;
    EXPECT_TRUE(tests::waitUntil([&] { return calls == 3; }));
}

TEST_F(JAControllerRequestsTest, callsBackInALaterTurnThanTheTransportReports)
{
    client->setDownloadCallBack([this](qint64, qint64, const auto&, bool) { events.push_back("the task ended"); });
    client->sendGetRequest(myself(), [this](const auto&, const auto&, const auto&) { events.push_back("answer"); });
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("the task ended", "answer"));
}

TEST_F(JAControllerRequestsTest, failsWithoutAnAddress)
{
    client->sendGetRequest(std::nullopt, requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1002"));
}

TEST_F(JAControllerRequestsTest, doesWithoutACallback)
{
    client->sendGetRequest(myself(), nullptr);
    client->sendDeleteRequest(myself(), nullptr);
    client->sendPostRequest(myself(), std::nullopt, std::nullopt, nullptr);
    EXPECT_TRUE(waitForEnds(3));
}

TEST_F(JAControllerRequestsTest, takesTheSessionAlongOnARedirectToTheSameHost)
{
    saveSession("N", "V");
    server.misbehave(Match::on("/rest/api/2/myself"), Fault().redirect("http://jira.example.test/elsewhere"));
    get();
    const auto requests = server.requests("/elsewhere");
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].header("Cookie"), "N=V");
    EXPECT_EQ(response->url, QStringLiteral("http://jira.example.test/elsewhere"));
}

TEST_F(JAControllerRequestsTest, neverShowsTheSessionToAnotherHost)
{
    saveSession("N", "V");
    server.misbehave(Match::on("/rest/api/2/myself"), Fault().redirect("http://other.example.test/elsewhere"));
    server.misbehave(Match::on("/elsewhere").once(), Fault().redirect("http://other.example.test/further"));
    get();
    for (const char* path : {"/elsewhere", "/further"}) {
        const auto requests = server.requests(path);
        ASSERT_EQ(requests.size(), 1u);
        EXPECT_EQ(requests[0].header("Host"), "other.example.test");
        EXPECT_EQ(requests[0].headerCount("Cookie"), 0);
    }
}

TEST_F(JAControllerRequestsTest, givesUpOnALoopOfRedirects)
{
    server.misbehave(Match::on("/rest/api/2/myself"), Fault().redirectToItself());
    get();
    EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1007"));
    EXPECT_EQ(server.requestCount(), 21u);
}

TEST_F(JAControllerRequestsTest, sendsRequestsWithoutWaitingForEarlierAnswers)
{
    server.misbehave(Match::next(), Fault().hold(standin::Point::responseHead(0)));
    client->sendGetRequest(myself(), [this](const auto&, const auto&, const auto&) { events.push_back("first"); });
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    client->sendGetRequest(myself(), [this](const auto&, const auto&, const auto&) { events.push_back("second"); });
    ASSERT_TRUE(waitForEvents(1));
    server.release();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("second", "first"));
}

} // namespace
