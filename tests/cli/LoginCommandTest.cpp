#include "tests/cli/CommandTest.h"

#include <QFileInfo>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using tests::words;

constexpr char login[] = "login http://jira.example.test/ alice --password-stdin";

class LoginCommand : public tests::CommandTest
{
};

TEST_F(LoginCommand, SendsUserAndPasswordAndPrintsNothing)
{
    EXPECT_EQ(run(words(login), "secret\n"), Result({0, {}, {}}));
    ASSERT_EQ(server.requestCount(), 1U);
    EXPECT_EQ(server.lastRequest().path, "/rest/auth/1/session");
    EXPECT_EQ(server.lastRequest().body, R"({"password":"secret","username":"alice"})");
}

TEST_F(LoginCommand, TakesOneLineAsPassword)
{
    server.addUser("bob", " pass wörd ");
    const QStringList command = words("login http://jira.example.test/ bob --password-stdin");
    EXPECT_EQ(run(command, " pass wörd \nnot this\n"), Result({0, {}, {}}));
    EXPECT_EQ(run(command, " pass wörd \r\n"), Result({0, {}, {}}));
    EXPECT_EQ(run(command, " pass wörd "), Result({0, {}, {}}));
}

TEST_F(LoginCommand, SavesServerAndSessionForTheUserAlone)
{
    logIn();
    EXPECT_EQ(run(words("session")).status, 0);
    const QFileInfo settings(environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s);
    ASSERT_TRUE(settings.exists());
    EXPECT_EQ(settings.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(LoginCommand, FailsWhenNothingCanBeSaved)
{
    writeFile(u"no folder"_s, "");
    environment.insert(u"XDG_CONFIG_HOME"_s, path(u"no folder"_s));
    EXPECT_EQ(run(words(login), "secret\n"), Result({1, {}, "Server and session could not be saved.\n"}));
}

TEST_F(LoginCommand, KeepsCookiesInTheDataFolder)
{
    server.misbehave(Match::next(), Fault().header("Set-Cookie", "kept=long; Max-Age=86400; Path=/"));
    logIn();
    EXPECT_TRUE(QFileInfo::exists(environment.value(u"XDG_DATA_HOME"_s) + u"/tljira/cookies.txt"_s));
}

TEST_F(LoginCommand, FailsWithTheServersRefusal)
{
    EXPECT_EQ(run(words(login), "wrong\n"),
              Result({1, {}, "The operation couldn’t be completed. (invalid sessioin error 401.)\n"}));
    EXPECT_EQ(run(words("whoami")), Result({1, {}, "No server is set: use tljira login SERVER USER first.\n"}));
}

TEST_F(LoginCommand, ThatFailsKeepsTheEarlierServerAndSession)
{
    logIn();
    EXPECT_EQ(run(words("login http://unknown.invalid/ alice --password-stdin"), "secret\n"),
              Result({1, {}, "A server with the specified hostname could not be found.\n"}));
    EXPECT_EQ(run(words("session")).status, 0);
}

TEST_F(LoginCommand, IsNotTakenInByAPageForPeople)
{
    server.misbehave(Match::next(), Fault().status(200, "<html>Log in</html>", "text/html"));
    EXPECT_EQ(run(words(login), "secret\n"), Result({1, {}, "The server’s answer opens no session.\n"}));
    EXPECT_EQ(run(words("whoami")).error, "No server is set: use tljira login SERVER USER first.\n");
}

TEST_F(LoginCommand, NeedsAPassword)
{
    EXPECT_EQ(run(words(login)), Result({1, {}, "No password was given.\n"}));
    EXPECT_EQ(run(words(login), QByteArray(5000, 'x') + '\n'), Result({1, {}, "The password is too long.\n"}));
    EXPECT_EQ(server.requestCount(), 0U);
}

TEST_F(LoginCommand, RefusesAnAddressThatWouldLeadElsewhere)
{
    EXPECT_EQ(run(words("login jira.example.test alice --password-stdin"), "secret\n"),
              Result({2,
                      {},
                      "“jira.example.test” is no address of a server, such as https://jira.example.com. See tljira "
                      "--help.\n"}));
    EXPECT_EQ(run(words("login http://jira.example.test:8080/ alice --password-stdin"), "secret\n").status, 2);
    EXPECT_EQ(server.requestCount(), 0U);
}

} // namespace
