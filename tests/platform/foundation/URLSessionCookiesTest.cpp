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

TEST_F(URLSessionCookiesTest, areThoseOfTheJarThatTheConfigurationNames)
{
    const auto jar = std::make_shared<HTTPCookieStorage>(folder.filePath(QStringLiteral("cookies.txt")));
    configuration.HTTPCookieStorage = jar;
    askTwice();
    EXPECT_EQ(server.lastRequest().header("Cookie"), "own=1");
    ASSERT_EQ(jar->cookies().size(), 1U);
    EXPECT_EQ(jar->cookies()[0].name, QStringLiteral("own"));
    EXPECT_TRUE(HTTPCookieStorage::sharedHTTPCookieStorage()->cookies().empty());
}

TEST_F(URLSessionCookiesTest, areNoneWithoutAJar)
{
    configuration.HTTPCookieStorage = nullptr;
    askTwice();
    EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 0);
    EXPECT_TRUE(HTTPCookieStorage::sharedHTTPCookieStorage()->cookies().empty());
}

TEST_F(URLSessionCookiesTest, areNoneWhenTheConfigurationSaysSo)
{
    configuration.HTTPShouldSetCookies = false;
    askTwice();
    EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 0);
    EXPECT_TRUE(HTTPCookieStorage::sharedHTTPCookieStorage()->cookies().empty());
}

/// The Cookie line of a request that has one of its own, beside a jar that holds own=1.
class URLSessionCookieLineTest : public URLSessionCookiesTest
{
protected:
    std::string lineFor(const char* cookies)
    {
        const auto jar = std::make_shared<HTTPCookieStorage>(folder.filePath(QStringLiteral("cookies.txt")));
        configuration.HTTPCookieStorage = jar;
        askTwice();
        tljira::URLRequest request = requestFor("x");
        request.addValue(QString::fromUtf8(cookies), QStringLiteral("cookie"));
        server.misbehave(Match::next(), Fault().status(200, ""));
        run(request);
        EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 1);
        return server.lastRequest().header("Cookie");
    }
};

TEST_F(URLSessionCookieLineTest, holdsAValueWithSemicolonsAsItIs)
{
    for (const char* pair : {"N=a;b", "N=a;", "N=;;a", "N=a;own=1", "N=;b ;c"})
        EXPECT_EQ(lineFor(pair), std::string("own=1; ") + pair) << pair;
}

TEST_F(URLSessionCookieLineTest, holdsEachPairOnce)
{
    EXPECT_EQ(lineFor("own=1"), "own=1");
    EXPECT_EQ(lineFor("own=1; N=V"), "own=1; N=V");
    EXPECT_EQ(lineFor("N=V; own=1"), "own=1; N=V");
    EXPECT_EQ(lineFor("own=2"), "own=1; own=2");
}

TEST_F(URLSessionCookieLineTest, isOneLineWhateverAValueHolds)
{
    EXPECT_EQ(lineFor("N=a\r\nX-Own: b"), "own=1; N=aX-Own: b");
    EXPECT_EQ(server.lastRequest().headerCount("X-Own"), 0);
}

} // namespace
