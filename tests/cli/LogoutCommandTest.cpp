#include "platform/foundation/os/FileLock.h"
#include "tests/cli/CommandTest.h"

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using standin::Point;
using tests::words;

class LogoutCommand : public tests::CommandTest
{
};

TEST_F(LogoutCommand, endsTheSessionAndForgetsTheServer)
{
    logIn();
    EXPECT_EQ(run(words("logout")), Result({0, {}, {}}));
    EXPECT_EQ(server.sessionCount(), 0U);
    EXPECT_EQ(run(words("whoami")), Result({1, {}, "No server is set: use tljira login SERVER USER first.\n"}));
}

TEST_F(LogoutCommand, failsWithAnyOtherStatus)
{
    logIn();
    server.misbehave(Match::next(), Fault().status(200, "{}", "application/json"));
    EXPECT_EQ(run(words("logout")),
              Result({1, {}, "The operation couldn’t be completed. (invalid sessioin error 200.)\n"}));
}

TEST_F(LogoutCommand, tellsATransportFailureOnce)
{
    logIn();
    server.misbehave(Match::on("*"), Fault().close(Point::responseHead(0)));
    EXPECT_EQ(run(words("logout")), Result({1, {}, "The network connection was lost.\n"}));
    EXPECT_EQ(run(words("whoami")).error, "No server is set: use tljira login SERVER USER first.\n");
}

TEST_F(LogoutCommand, needsAServer)
{
    EXPECT_EQ(run(words("logout")), Result({1, {}, "No server is set: use tljira login SERVER USER first.\n"}));
}

TEST_F(LogoutCommand, failsWhenAddressOrCookiesStayOnTheDisk)
{
    server.misbehave(Match::next(), Fault().header("Set-Cookie", "kept=long; Max-Age=86400; Path=/"));
    logIn();
    const QString settings = environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s;
    const QString cookies = environment.value(u"XDG_DATA_HOME"_s) + u"/tljira/cookies.txt"_s;
    tljira::os::FileLock others;
    ASSERT_FALSE(others.lockExisting((cookies + u".lock"_s).toStdString()));
    EXPECT_EQ(run(words("logout")),
              Result({1, {}, "The cookies could not be removed: another process keeps it locked.\n"}));
    EXPECT_TRUE(readFile(cookies).contains("kept"));

    logIn();
    ASSERT_FALSE(others.lockExisting((settings + u".lock"_s).toStdString()));
    server.misbehave(Match::on("DELETE", "*"), Fault().close(Point::responseHead(0)));
    EXPECT_EQ(run(words("logout")), Result({1,
                                            {},
                                            "The network connection was lost. The server’s address could not be "
                                            "removed: another process keeps it locked.\n"}));
    EXPECT_TRUE(readFile(settings).contains("jira.example.test"));
    EXPECT_FALSE(readFile(cookies).contains("kept"));
}

} // namespace
