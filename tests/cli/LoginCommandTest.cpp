#include "platform/foundation/os/FileLock.h"
#include "tests/cli/CommandTest.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <csignal>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using tests::words;

constexpr char login[] = "login http://jira.example.test/ anna --password-stdin";

class LoginCommand : public tests::CommandTest
{
protected:
    QString settingsPath() const { return environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s; }
    QString cookiesPath() const { return environment.value(u"XDG_DATA_HOME"_s) + u"/tljira/cookies.txt"_s; }
    QByteArray settings() const { return readFile(settingsPath()); }
};

TEST_F(LoginCommand, sendsUserAndPasswordAndPrintsNothing)
{
    EXPECT_EQ(run(words(login), "secret\n"), Result({0, {}, {}}));
    ASSERT_EQ(server.requestCount(), 1U);
    EXPECT_EQ(server.lastRequest().path, "/rest/auth/1/session");
    EXPECT_EQ(server.lastRequest().body, R"({"password":"secret","username":"anna"})");
}

TEST_F(LoginCommand, takesOneLineAsPassword)
{
    server.addUser("bob", " pass wörd ");
    const QStringList command = words("login http://jira.example.test/ bob --password-stdin");
    EXPECT_EQ(run(command, " pass wörd \nnot this\n"), Result({0, {}, {}}));
    EXPECT_EQ(run(command, " pass wörd \r\n"), Result({0, {}, {}}));
    EXPECT_EQ(run(command, " pass wörd "), Result({0, {}, {}}));
}

TEST_F(LoginCommand, savesServerAndSessionForTheUserAlone)
{
    logIn();
    EXPECT_EQ(run(words("session")).status, 0);
    const QFileInfo settings(environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s);
    ASSERT_TRUE(settings.exists());
    EXPECT_EQ(settings.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(LoginCommand, failsWhenNothingCanBeSaved)
{
    writeFile(u"no folder"_s, "");
    environment.insert(u"XDG_CONFIG_HOME"_s, path(u"no folder"_s));
    EXPECT_EQ(run(words(login), "secret\n"),
              Result({1, {}, "Server and session could not be saved: its folder cannot be made.\n"}));
}

TEST_F(LoginCommand, keepsCookiesInTheDataFolder)
{
    server.misbehave(Match::next(), Fault().header("Set-Cookie", "kept=long; Max-Age=86400; Path=/"));
    logIn();
    EXPECT_TRUE(QFileInfo::exists(environment.value(u"XDG_DATA_HOME"_s) + u"/tljira/cookies.txt"_s));
}

TEST_F(LoginCommand, failsWithTheServersRefusal)
{
    EXPECT_EQ(run(words(login), "wrong\n"),
              Result({1, {}, "The operation couldn’t be completed. (invalid sessioin error 401.)\n"}));
    EXPECT_EQ(run(words("whoami")), Result({1, {}, "No server is set: use tljira login SERVER USER first.\n"}));
}

TEST_F(LoginCommand, thatFailsKeepsTheEarlierServerAndSession)
{
    logIn();
    EXPECT_EQ(run(words("login http://unknown.invalid/ anna --password-stdin"), "secret\n"),
              Result({1, {}, "A server with the specified hostname could not be found.\n"}));
    EXPECT_EQ(run(words("session")).status, 0);
}

TEST_F(LoginCommand, isNotTakenInByAPageForPeople)
{
    server.misbehave(Match::next(), Fault().status(200, "<html>Log in</html>", "text/html"));
    EXPECT_EQ(run(words(login), "secret\n"), Result({1, {}, "The server’s answer opens no session.\n"}));
    EXPECT_EQ(run(words("whoami")).error, "No server is set: use tljira login SERVER USER first.\n");
}

TEST_F(LoginCommand, needsAPassword)
{
    EXPECT_EQ(run(words(login)), Result({1, {}, "No password was given.\n"}));
    EXPECT_EQ(run(words(login), QByteArray(5000, 'x') + '\n'), Result({1, {}, "The password is too long.\n"}));
    EXPECT_EQ(server.requestCount(), 0U);
}

TEST_F(LoginCommand, refusesAnAddressThatWouldLeadElsewhere)
{
    EXPECT_EQ(run(words("login jira.example.test anna --password-stdin"), "secret\n"),
              Result({2,
                      {},
                      "“jira.example.test” is no address of a server, such as https://jira.example.com. See tljira "
                      "--help.\n"}));
    EXPECT_EQ(run(words("login http://jira.example.test:80x/ anna --password-stdin"), "secret\n").status, 2);
    EXPECT_EQ(server.requestCount(), 0U);
}

TEST_F(LoginCommand, trimsAPastedAddress)
{
    EXPECT_EQ(run({u"login"_s, u" \thttp://jira.example.test/ \n"_s, u"anna"_s, u"--password-stdin"_s}, "secret\n"),
              Result({0, {}, {}}));
    EXPECT_EQ(run(words("whoami")).status, 0);
}

TEST_F(LoginCommand, thatFailsLeavesTheSettingsAsTheyWere)
{
    server.misbehave(Match::next(), Fault().header("Set-Cookie", "kept=long; Max-Age=86400; Path=/"));
    logIn();
    const QByteArray before = settings();
    const QStringList elsewhere = words("login http://other.example.test/ anna --password-stdin");
    EXPECT_EQ(run(elsewhere, "wrong\n").status, 1);
    EXPECT_EQ(settings(), before);
    server.misbehave(Match::next(), Fault().status(200, "<html>Log in</html>", "text/html"));
    EXPECT_EQ(run(elsewhere, "secret\n").status, 1);
    EXPECT_EQ(settings(), before);
    {
        tljira::os::FileLock others;
        ASSERT_FALSE(others.lockExisting((settingsPath() + u".lock"_s).toStdString()));
        EXPECT_EQ(run(elsewhere, "secret\n"),
                  Result({1, {}, "Server and session could not be saved: another process keeps it locked.\n"}));
        EXPECT_EQ(settings(), before);
    }
    {
        tljira::os::FileLock others;
        ASSERT_FALSE(others.lockExisting((cookiesPath() + u".lock"_s).toStdString()));
        server.misbehave(Match::next(), Fault().header("Set-Cookie", "kept=new; Max-Age=86400; Path=/"));
        EXPECT_EQ(run(elsewhere, "secret\n"),
                  Result({1, {}, "The cookies could not be saved: another process keeps it locked.\n"}));
        EXPECT_EQ(settings(), before);
    }
    EXPECT_EQ(run(elsewhere, "secret\n").status, 0);
    EXPECT_NE(settings(), before);
}

TEST_F(LoginCommand, takesTheSessionOfOneServerToNoOther)
{
    logIn();
    ASSERT_EQ(run(words("login http://other.example.test/ anna --password-stdin"), "secret\n").status, 0);
    EXPECT_EQ(server.lastRequest().path, "/rest/auth/1/session");
    EXPECT_EQ(server.lastRequest().header("Cookie"), "");
}

/// Users and servers go together: "a" logs in at a.example.test only.
class ManyLogins : public LoginCommand
{
protected:
    ManyLogins()
    {
        for (const char* name : {"a", "b", "c", "d"})
            server.addUser(name, "secret");
    }

    std::unique_ptr<tests::ToolRun> startLogin(const QString& name) const
    {
        auto tool = start({u"login"_s, u"http://%1.example.test/"_s.arg(name), name, u"--password-stdin"_s});
        tool->sendInput("secret\n");
        return tool;
    }

    /// The user whose session is saved, and the server that it is saved with.
    void expectSessionOfItsServer() const
    {
        const QString address = QJsonDocument::fromJson(settings()).object().value(u"jiraUrl"_s).toString();
        const Result whoami = run(words("whoami --json"));
        ASSERT_EQ(whoami.status, 0) << whoami.error.toStdString();
        const QString user = QJsonDocument::fromJson(whoami.output).object().value(u"name"_s).toString();
        EXPECT_EQ(address, u"http://%1.example.test/"_s.arg(user));
    }
};

TEST_F(ManyLogins, atOnceSaveTheSessionWithItsServer)
{
    for (int round = 0; round < 5; ++round) {
        std::vector<std::unique_ptr<tests::ToolRun>> tools;
        for (const char* name : {"a", "b", "c", "d"})
            tools.push_back(startLogin(QString::fromLatin1(name)));
        int saved = 0;
        for (const auto& tool : tools) {
            saved += tool->status() == 0;
            EXPECT_TRUE(tool->status() == 0 || tool->hasGivenUpWaiting()) << tool->error().toStdString();
        }
        EXPECT_GT(saved, 0);
        expectSessionOfItsServer();
    }
}

TEST_F(ManyLogins, thatAreKilledSaveTheSessionWithItsServer)
{
    ASSERT_EQ(startLogin(u"a"_s)->status(), 0);
    for (int round = 0; round < 5; ++round) {
        for (const char* name : {"b", "a"}) {
            const auto requests = server.requestCount();
            const auto tool = startLogin(QString::fromLatin1(name));
            ASSERT_TRUE(tests::waitUntil([&] { return server.requestCount() > requests; }));
            tool->sendSignal(SIGKILL);
            tool->status();
            expectSessionOfItsServer();
        }
    }
}

} // namespace
