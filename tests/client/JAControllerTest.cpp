#include "constants/JAConstants.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "records/TLJiraOptions.h"
#include "tests/client/ClientTest.h"

#include <QJsonArray>

#include <thread>

namespace {

using testing::ElementsAre;

class JAControllerTest : public tests::ClientTest
{
protected:
    static std::optional<QString> savedAddress()
    {
        return tljira::UserDefaults::standardUserDefaults().stringForKey(QStringLiteral("jiraUrl"));
    }
};

TEST_F(JAControllerTest, hasABaseThatNoRequestCanReachUntilAnAddressIsSaved)
{
    const auto fresh = JAController::init();
    EXPECT_EQ(fresh->jiraHost(), QStringLiteral("(null)://(null)/"));
    EXPECT_EQ(fresh->url(kCurrentUserPath), QStringLiteral("(null)://(null)/rest/api/2/myself"));

    fresh->sendGetRequest(fresh->url(kCurrentUserPath), requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1002"));
    EXPECT_EQ(body, std::nullopt);
    EXPECT_EQ(server.requestCount(), 0u);
}

TEST_F(JAControllerTest, forgetsTheAddressWhenTheHostIsSetToNothing)
{
    client->setHost(QStringLiteral("https://jira.example.test"));
    ASSERT_EQ(savedAddress(), QStringLiteral("https://jira.example.test"));
    client->setHost(std::nullopt);
    EXPECT_EQ(client->jiraHost(), std::nullopt);
    EXPECT_EQ(client->url(kCurrentUserPath), std::nullopt);
    EXPECT_EQ(savedAddress(), std::nullopt);
}

TEST_F(JAControllerTest, savesTheAddressAsGivenAndUsesItsSchemeAndHost)
{
    client->setHost(QStringLiteral("https://jira.example.test:8443/jira/"));
    EXPECT_EQ(client->jiraHost(), QStringLiteral("https://jira.example.test/"));
    EXPECT_EQ(savedAddress(), QStringLiteral("https://jira.example.test:8443/jira/"));
}

TEST_F(JAControllerTest, startsWithTheSavedAddress)
{
    client->setHost(QStringLiteral("https://jira.example.test:8443/jira/"));
    EXPECT_EQ(JAController::init()->jiraHost(), QStringLiteral("https://jira.example.test/"));
}

TEST_F(JAControllerTest, onlyKeepsAnAddressThatIsSetAsProperty)
{
    client->setJiraHost(QStringLiteral("https://elsewhere.example.test/x"));
    EXPECT_EQ(client->jiraHost(), QStringLiteral("https://elsewhere.example.test/"));
    EXPECT_EQ(savedAddress(), std::nullopt);
}

TEST_F(JAControllerTest, makesItsBaseOfSchemeAndHostAlone)
{
    const std::vector<std::pair<const char*, const char*>> bases = {
        {"http://jira.example.test", "http://jira.example.test/"},
        {"HTTPS://Jira.Example.Test/a?b#c", "HTTPS://Jira.Example.Test/"},
        {"https://user:pw@jira.example.test:8443/", "https://jira.example.test/"},
        {"jira.example.test", "(null)://(null)/"},
        {"jira.example.test:8443/x", "jira.example.test://(null)/"},
        {"http://[::1]:8080/", "http://::1/"},
        {"http:///x", "http://(null)/"},
        {"not an address", "(null)://(null)/"},
        {"", "(null)://(null)/"},
    };
    for (const auto& [address, base] : bases) {
        client->setJiraHost(QString::fromLatin1(address));
        EXPECT_EQ(client->jiraHost(), QString::fromLatin1(base)) << address;
    }
}

TEST_F(JAControllerTest, joinsPathsWithOneSlash)
{
    for (const char* path : {"rest/api/2/myself", "/rest/api/2/myself", "rest//api/2/myself", "rest/api/2/myself/"})
        EXPECT_EQ(client->url(QString::fromLatin1(path)), QStringLiteral("http://jira.example.test/rest/api/2/myself"))
            << path;
    EXPECT_EQ(client->url(QStringLiteral("rest/api/2/issue/A B")),
              QStringLiteral("http://jira.example.test/rest/api/2/issue/A B"));
}

TEST_F(JAControllerTest, putsAnAddressOfVersionSixBackIntoItsBrackets)
{
    client->setJiraHost(QStringLiteral("http://[::1]:8080/"));
    EXPECT_EQ(client->url(kCurrentUserPath), QStringLiteral("http://[::1]/rest/api/2/myself"));
}

TEST_F(JAControllerTest, decodesJSONOfAnyType)
{
    EXPECT_EQ(JAController::jsonSerialization(QByteArray("42")), QJsonValue(42));
    EXPECT_EQ(JAController::jsonSerialization(QByteArray("\"text\"")), QJsonValue(QStringLiteral("text")));
    EXPECT_EQ(JAController::jsonSerialization(QByteArray("null")), QJsonValue(QJsonValue::Null));
    EXPECT_EQ(JAController::jsonSerialization(QByteArray("{\"a\": 1}")),
              QJsonValue(QJsonObject{{QStringLiteral("a"), 1}}));
    EXPECT_EQ(JAController::jsonSerialization(QByteArray("[]")), QJsonValue(QJsonArray()));
}

TEST_F(JAControllerTest, decodesNothingFromWhatIsNoJSON)
{
    EXPECT_EQ(JAController::jsonSerialization(QByteArray()), std::nullopt);
    EXPECT_EQ(JAController::jsonSerialization(std::nullopt), std::nullopt);
    EXPECT_EQ(JAController::jsonSerialization(QByteArray("<html></html>")), std::nullopt);
    EXPECT_EQ(JAController::jsonSerialization(QByteArray("{\"a\": ")), std::nullopt);
    EXPECT_EQ(JAController::jsonSerialization(QByteArray(200000, '[')), std::nullopt);
}

TEST_F(JAControllerTest, isMadeOnceForAllThreads)
{
    std::vector<const JAController*> seen(8);
    std::vector<std::thread> threads;
    for (const JAController*& place : seen)
        threads.emplace_back([&place] { place = JAController::sharedInstance().get(); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_NE(JAController::sharedInstance(), nullptr);
    EXPECT_THAT(seen, testing::Each(JAController::sharedInstance().get()));
}

TEST_F(JAControllerTest, runsItsRequestsWithTheJarOfTheProcess)
{
    const auto& jar = tljira::HTTPCookieStorage::sharedHTTPCookieStorage();
    jar->setCookie({.domain = QStringLiteral("jira.example.test"),
                    .path = QStringLiteral("/"),
                    .name = QStringLiteral("before"),
                    .value = QStringLiteral("1")});
    server.misbehave(standin::Match::next(), standin::Fault().status(200, "").header("Set-Cookie", "own=2; Path=/"));
    client->sendGetRequest(client->url(kCurrentUserPath), requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(server.lastRequest().header("Cookie"), "before=1");

    QStringList names;
    for (const tljira::HTTPCookie& cookie : jar->cookies())
        names.append(cookie.name + u'=' + cookie.value);
    EXPECT_THAT(names, testing::UnorderedElementsAre(QStringLiteral("before=1"), QStringLiteral("own=2")));

    // Other clients of the process have the same jar.
    const auto other = JAController::init();
    other->setJiraHost(client->jiraHost());
    other->sendGetRequest(other->url(kCurrentUserPath), requestCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(server.lastRequest().header("Cookie"),
                testing::AllOf(testing::HasSubstr("before=1"), testing::HasSubstr("own=2")));
}

TEST_F(JAControllerTest, speaksToServersAsTheHostChose)
{
    const tljira::URLSessionConfiguration before = client->session()->configuration();
    const QString route = QStringLiteral("a.example.test:80:127.0.0.1:1");
    TLJiraOptions::use({.routes = {route},
                        .userAgent = QStringLiteral("Weaver/2.1"),
                        .proxy = QStringLiteral("http://proxy.example.test:3128"),
                        .authorities = {QStringLiteral("/etc/own.pem"), true}});
    const tljira::URLSessionConfiguration chosen = JAController::init()->session()->configuration();
    TLJiraOptions::use({});
    EXPECT_EQ(chosen.routes, QStringList(route) + before.routes);
    EXPECT_EQ(chosen.userAgent, QStringLiteral("Weaver/2.1"));
    EXPECT_EQ(chosen.proxy, QStringLiteral("http://proxy.example.test:3128"));
    EXPECT_EQ(chosen.authorities, QStringLiteral("/etc/own.pem"));
    EXPECT_FALSE(chosen.trustsSystemAuthorities);

    EXPECT_NE(before.userAgent, QString());
    EXPECT_EQ(before.proxy, std::nullopt);
    EXPECT_TRUE(before.trustsSystemAuthorities);
}

TEST_F(JAControllerTest, hasNothingAtFirst)
{
    const auto fresh = JAController::init();
    EXPECT_EQ(fresh->jaSession(), nullptr);
    EXPECT_EQ(fresh->pathFile(), std::nullopt);
    EXPECT_EQ(fresh->delegate(), nullptr);
    EXPECT_NE(fresh->session(), nullptr);
    EXPECT_FALSE(fresh->downloadCallBack());
    EXPECT_FALSE(fresh->uploadCallBack());
    EXPECT_EQ(fresh->savePath(), std::nullopt);
    EXPECT_EQ(fresh->upladTask(), nullptr);
    EXPECT_EQ(fresh->downloadTask(), nullptr);
}

TEST_F(JAControllerTest, keepsThePathOfADocument)
{
    client->setPathFile(QStringLiteral("/tmp/plan.tessaloom"));
    EXPECT_EQ(client->pathFile(), QStringLiteral("/tmp/plan.tessaloom"));
    client->setPathFile(QString());
    EXPECT_EQ(client->pathFile(), QString());
    client->setPathFile(std::nullopt);
    EXPECT_EQ(client->pathFile(), std::nullopt);
}

TEST_F(JAControllerTest, holdsItsDelegate)
{
    const std::weak_ptr<tests::RecordingDelegate> observer = delegate;
    delegate.reset();
    EXPECT_FALSE(observer.expired());
    client->setDelegate(nullptr);
    EXPECT_TRUE(observer.expired());
}

TEST_F(JAControllerTest, letsADelegateUseTheClientAsItGoes)
{
    class Parting : public JAControllerDelegate
    {
    public:
        explicit Parting(const std::shared_ptr<JAController>& owner)
            : m_client(owner)
        {
        }
        ~Parting() override { m_client.lock()->setPathFile(QStringLiteral("gone")); }
        void jaValidSession() override {}
        void jaInvalidSession() override {}

    private:
        std::weak_ptr<JAController> m_client;
    };
    client->setDelegate(std::make_shared<Parting>(client));
    client->setDelegate(nullptr);
    EXPECT_EQ(client->pathFile(), QStringLiteral("gone"));
}

TEST_F(JAControllerTest, livesUntilItsRequestsHaveEnded)
{
    const std::weak_ptr<JAController> observer = client;
    server.misbehave(standin::Match::next(), standin::Fault().hold(standin::Point::responseHead(0)));
    client->sendGetRequest(client->url(kCurrentUserPath), requestCallBack());
    client.reset();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    EXPECT_FALSE(observer.expired());
    server.release();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_TRUE(tests::waitUntil([&] { return observer.expired(); }));
}

TEST_F(JAControllerTest, livesUntilItsDownloadHasEnded)
{
    const std::weak_ptr<JAController> observer = client;
    server.misbehave(standin::Match::next(),
                     standin::Fault().status(200, std::string(1 << 20, 'x')).hold(standin::Point::responseBody(1000)));
    client->downloadFile(client->url(QStringLiteral("file")), downloadCallBack(), path("saved"));
    client.reset();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    tests::drainMainQueue();
    EXPECT_FALSE(observer.expired());
    server.release();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_TRUE(tests::waitUntil([&] { return observer.expired(); }));
    EXPECT_EQ(tests::contentsOf(path("saved")), QByteArray(1 << 20, 'x'));
}

TEST_F(JAControllerTest, livesUntilItsDownloadIsCancelledEvenIfTheTaskIsKept)
{
    const std::weak_ptr<JAController> observer = client;
    server.misbehave(standin::Match::next(), standin::Fault().hold(standin::Point::responseHead(0)));
    client->downloadFile(client->url(QStringLiteral("file")), downloadCallBack(), path("saved"));
    const auto task = client->downloadTask();
    client.reset();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    task->cancel();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -999, NO)"));
    EXPECT_TRUE(tests::waitUntil([&] { return observer.expired(); }));
}

TEST_F(JAControllerTest, livesUntilItsUploadHasEnded)
{
    const std::weak_ptr<JAController> observer = client;
    std::vector<qint64> sent;
    server.misbehave(standin::Match::next(),
                     standin::Fault().status(200, "[]", "application/json").hold(standin::Point::responseHead(0)));
    client->uploadFileInIssue(writeFile("a.bin", "bytes"), QStringLiteral("a.bin"), QStringLiteral("ABC-1"),
                              completionCallBack(), [&sent](qint64 bytes, qint64) { sent.push_back(bytes); });
    client.reset();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    ASSERT_TRUE(tests::waitUntil([&] { return !sent.empty(); }));
    EXPECT_FALSE(observer.expired());
    server.release();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("no error"));
    EXPECT_TRUE(tests::waitUntil([&] { return observer.expired(); }));
}

TEST_F(JAControllerTest, isLetGoWithASessionThatTakesItsPlaceUnderWay)
{
    const std::weak_ptr<JAController> observer = client;
    server.misbehave(standin::Match::next(), standin::Fault().hold(standin::Point::responseHead(0)));
    client->downloadFile(client->url(QStringLiteral("file")), downloadCallBack(), path("saved"));
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    client->setSession(tljira::URLSession::sessionWithConfiguration(client->session()->configuration(), client));
    client.reset();
    EXPECT_TRUE(tests::waitUntil([&] { return observer.expired(); }));
    EXPECT_EQ(events, std::vector<std::string>());
}

} // namespace
