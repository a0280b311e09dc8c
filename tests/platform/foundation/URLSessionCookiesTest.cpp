#include "tests/platform/foundation/SessionTest.h"

#include <QTemporaryDir>

namespace {

using standin::Fault;
using standin::Match;
using tljira::HTTPCookieStorage;
using tljira::URLSessionConfiguration;

class URLSessionCookiesTest : public tests::SessionTest
{
protected:
    /// Gets a cookie and asks again.
    void askTwice()
    {
        session = tljira::URLSession::sessionWithConfiguration(
            configuration, std::shared_ptr<tljira::URLSessionDelegate>(anchor, this));
        server.misbehave(Match::next(), Fault().status(200, "").header("Set-Cookie", "own=1; Path=/"));
        run(requestFor("x"));
        server.misbehave(Match::next(), Fault().status(200, ""));
        run(requestFor("x"));
    }

    QTemporaryDir folder;
    URLSessionConfiguration configuration = URLSessionConfiguration::defaultSessionConfiguration();
};

TEST_F(URLSessionCookiesTest, AreThoseOfTheJarThatTheConfigurationNames)
{
    const auto jar = std::make_shared<HTTPCookieStorage>(folder.filePath(QStringLiteral("cookies.txt")));
    configuration.HTTPCookieStorage = jar;
    askTwice();
    EXPECT_EQ(server.lastRequest().header("Cookie"), "own=1");
    ASSERT_EQ(jar->cookies().size(), 1U);
    EXPECT_EQ(jar->cookies()[0].name, QStringLiteral("own"));
    EXPECT_TRUE(HTTPCookieStorage::sharedHTTPCookieStorage()->cookies().empty());
}

TEST_F(URLSessionCookiesTest, AreNoneWithoutAJar)
{
    configuration.HTTPCookieStorage = nullptr;
    askTwice();
    EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 0);
    EXPECT_TRUE(HTTPCookieStorage::sharedHTTPCookieStorage()->cookies().empty());
}

TEST_F(URLSessionCookiesTest, AreNoneWhenTheConfigurationSaysSo)
{
    configuration.HTTPShouldSetCookies = false;
    askTwice();
    EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 0);
    EXPECT_TRUE(HTTPCookieStorage::sharedHTTPCookieStorage()->cookies().empty());
}

} // namespace
