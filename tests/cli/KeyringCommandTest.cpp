// The tool with the desktop's keyring.

#include "platform/foundation/os/FileLock.h"
#include "tests/cli/CommandTest.h"
#include "tests/kit/DesktopKeyring.h"
#include "tests/kit/SignInWay.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <csignal>

namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::IsEmpty;
using tests::DesktopKeyring;
using tests::Jira;
using tests::SignInWay;
using tests::words;

const QString application = u"tljira"_s;

/// Before the tool's environment is taken from this process.
class Desktop
{
protected:
    DesktopKeyring keyring;
};

class KeyringCommandTest : public testing::WithParamInterface<SignInWay>, private Desktop, public tests::CommandTest
{
protected:
    using Desktop::keyring;

    KeyringCommandTest() { environment.insert(u"QT_LOGGING_RULES"_s, u"*=true"_s); }

    /// Whatever a test does, the secrets are in no file and in nothing that the tool has shown.
    ~KeyringCommandTest() override
    {
        EXPECT_THAT(tests::filesWith(m_secrets), IsEmpty());
        for (const QByteArray& secret : m_secrets)
            EXPECT_FALSE(m_shown.contains(secret)) << m_shown.toStdString();
    }

    void startKeyring() { ASSERT_TRUE(keyring.start()); }

    Result runAndKeep(const QStringList& command, const QByteArray& input = {})
    {
        const Result result = run(command, input);
        m_shown += result.output + result.error;
        return result;
    }
    static QStringList login(const char* address = serverAddress)
    {
        QStringList command = {u"login"_s, QLatin1String(address)};
        if (GetParam().user[0])
            command << QLatin1String(GetParam().user);
        return command << (GetParam().isByToken ? u"--token-stdin"_s : u"--password-stdin"_s);
    }
    static QStringList loginToKeyring() { return login() << u"--keyring"_s; }
    static QByteArray input() { return QByteArray(GetParam().secret) + '\n'; }
    void logInHere()
    {
        ASSERT_EQ(runAndKeep(loginToKeyring(), input()), Result({0, {}, {}}));
        noteSecret();
    }
    void noteSecret()
    {
        const QByteArray secret = DesktopKeyring::secretOf(application);
        ASSERT_FALSE(secret.isEmpty());
        m_secrets << secret << secret.toBase64();
    }

    QString settingsPath() const { return environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s; }
    QJsonObject settings() const { return QJsonDocument::fromJson(readFile(settingsPath())).object(); }
    static QJsonObject withLogin()
    {
        return {{u"jiraUrl"_s, QLatin1String(serverAddress)},
                {u"signInKeyring"_s, GetParam().isByToken ? u"token"_s : u"session"_s}};
    }

private:
    QByteArray m_shown;
    QByteArrayList m_secrets;
};

INSTANTIATE_TEST_SUITE_P(By, KeyringCommandTest, testing::ValuesIn(tests::signInWays()),
                         testing::PrintToStringParamName());

TEST_P(KeyringCommandTest, doesEveryJobWithWhatTheKeyringHas)
{
    startKeyring();
    logInHere();
    EXPECT_EQ(settings(), withLogin());
    EXPECT_EQ(runAndKeep(words("session")).status, 0);
    EXPECT_THAT(runAndKeep(words("whoami")).output.toStdString(), HasSubstr("Anna Lindqvist"));
    writeFile(u"plan.tessaloom"_s, "bytes");
    EXPECT_EQ(runAndKeep(words("upload ABC-1 plan.tessaloom")), Result({0, {}, {}}));
    EXPECT_THAT(runAndKeep(words("attachments ABC-1")).output.toStdString(), HasSubstr("plan.tessaloom"));
    EXPECT_EQ(runAndKeep(words("download ABC-1 plan.tessaloom --to fetched")).status, 0);
    EXPECT_EQ(readFile(u"fetched"_s), "bytes");
    EXPECT_EQ(runAndKeep(words("--verbose whoami")).status, 0);
    EXPECT_EQ(runAndKeep(words("logout")), Result({0, {}, {}}));
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
    EXPECT_EQ(settings(), QJsonObject());
    EXPECT_EQ(runAndKeep(words("whoami")).error, "No server is set: use tljira login SERVER USER first.\n");
}

TEST_P(KeyringCommandTest, endsTheSessionAtItsServer)
{
    startKeyring();
    logInHere();
    server.forgetRequests();
    EXPECT_EQ(runAndKeep(words("logout")), Result({0, {}, {}}));
    ASSERT_EQ(server.requests().size(), GetParam().isByToken ? 0U : 1U);
    if (!GetParam().isByToken) {
        EXPECT_EQ(server.lastRequest().method, "DELETE");
        EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 1);
    }
}

TEST_P(KeyringCommandTest, saysThatNoKeyringRunsAndSavesNothing)
{
    const Result result = runAndKeep(loginToKeyring(), input());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.error.startsWith("The desktop’s keyring cannot be reached. Is one running?")) << result;
    EXPECT_FALSE(QFileInfo::exists(settingsPath()));
    EXPECT_THAT(tests::filesWith({GetParam().secret}), IsEmpty());
}

TEST_P(KeyringCommandTest, saysThatTheKeyringIsLocked)
{
    startKeyring();
    logInHere();
    ASSERT_TRUE(keyring.lock());
    server.forgetRequests();
    const Result refusal = {1, {}, "The desktop’s keyring is locked, or your login is no longer in it.\n"};
    EXPECT_EQ(runAndKeep(words("whoami")), refusal);
    EXPECT_EQ(runAndKeep(words("session --json")), refusal);
    EXPECT_EQ(runAndKeep(words("attachments ABC-1")), refusal);
    EXPECT_THAT(server.requests(), IsEmpty());
    EXPECT_EQ(runAndKeep(loginToKeyring(), input()),
              Result({1, {}, "The desktop’s keyring is locked. Unlock it and try again.\n"}));
    EXPECT_EQ(settings(), withLogin());
    keyring.stop();
    startKeyring();
    EXPECT_EQ(runAndKeep(words("whoami")).status, 0);
}

TEST_P(KeyringCommandTest, logsOutAgainWhenTheKeyringWasLocked)
{
    startKeyring();
    logInHere();
    ASSERT_TRUE(keyring.lock());
    EXPECT_EQ(runAndKeep(words("logout")),
              Result({1, {}, "Your login is still in the desktop’s keyring. Is that running and unlocked?\n"}));
    EXPECT_TRUE(DesktopKeyring::hasTextOf(application));
    EXPECT_EQ(runAndKeep(words("whoami")).error, "No server is set: use tljira login SERVER USER first.\n");
    keyring.stop();
    startKeyring();
    EXPECT_EQ(runAndKeep(words("logout")), Result({0, {}, {}}));
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
    EXPECT_EQ(settings(), QJsonObject());
}

TEST_P(KeyringCommandTest, keepsTheFormerLoginWhenAnotherFails)
{
    startKeyring();
    logInHere();
    const QByteArray entry = DesktopKeyring::textOf(application);
    EXPECT_EQ(runAndKeep(login("http://other.example.test/") << u"--keyring"_s, "wrong\n").status, 1);
    EXPECT_EQ(DesktopKeyring::textOf(application), entry);
    EXPECT_EQ(settings(), withLogin());
    EXPECT_EQ(runAndKeep(login("http://other.example.test/"), "wrong\n").status, 1);
    EXPECT_EQ(DesktopKeyring::textOf(application), entry);
    EXPECT_EQ(settings(), withLogin());
    EXPECT_EQ(runAndKeep(words("whoami")).status, 0);
}

TEST_P(KeyringCommandTest, keepsTheFormerLoginWhenTheDiskRefusesAnother)
{
    startKeyring();
    logInHere();
    const QByteArray entry = DesktopKeyring::textOf(application);
    {
        tljira::os::FileLock others;
        ASSERT_FALSE(others.lockExisting((settingsPath() + u".lock"_s).toStdString()));
        EXPECT_EQ(runAndKeep(login("http://other.example.test/") << u"--keyring"_s, input()),
                  Result({1, {}, "Server and session could not be saved: another process keeps it locked.\n"}));
    }
    EXPECT_EQ(DesktopKeyring::textOf(application), entry);
    EXPECT_EQ(settings(), withLogin());
    EXPECT_EQ(runAndKeep(words("whoami")).status, 0);
}

TEST_P(KeyringCommandTest, leavesTheLoginThatAnotherHasKeptWhenItTakesItsOwnBack)
{
    startKeyring();
    ASSERT_EQ(run(login(), input()), Result({0, {}, {}}));
    tljira::os::FileLock others;
    ASSERT_FALSE(others.lockExisting((settingsPath() + u".lock"_s).toStdString()));
    const auto tool = start(login("http://other.example.test/") << u"--keyring"_s);
    tool->sendInput(input());
    ASSERT_TRUE(tests::waitUntil([] { return DesktopKeyring::textOf(application).contains("other.example.test"); }));
    // The keyring is that of the desktop, whatever home the settings have.
    environment.insert(u"XDG_CONFIG_HOME"_s, path(u"another home"_s));
    ASSERT_EQ(run(loginToKeyring(), input()), Result({0, {}, {}}));
    const QByteArray entry = DesktopKeyring::textOf(application);
    EXPECT_TRUE(entry.contains("jira.example.test"));

    EXPECT_EQ(tool->status(), 1);
    EXPECT_EQ(tool->error(), "Server and session could not be saved: another process keeps it locked.\n");
    EXPECT_EQ(DesktopKeyring::textOf(application), entry);
}

TEST_P(KeyringCommandTest, leavesNoneInTheKeyringThatTheDiskDoesNotKnowOf)
{
    startKeyring();
    writeFile(u"no folder"_s, "");
    environment.insert(u"XDG_CONFIG_HOME"_s, path(u"no folder"_s));
    EXPECT_EQ(runAndKeep(loginToKeyring(), input()),
              Result({1, {}, "Server and session could not be saved: its folder cannot be made.\n"}));
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
}

TEST_P(KeyringCommandTest, movesToTheKeyringAndBack)
{
    startKeyring();
    ASSERT_EQ(run(login(), input()), Result({0, {}, {}}));
    const QJsonObject inSettings = settings();
    EXPECT_TRUE(inSettings.contains(u"signInToken"_s) || inSettings.contains(u"kSessionValue"_s));
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
    ASSERT_EQ(run(loginToKeyring(), input()), Result({0, {}, {}}));
    EXPECT_EQ(settings(), withLogin());
    ASSERT_EQ(run(login(), input()), Result({0, {}, {}}));
    EXPECT_EQ(settings().keys(), inSettings.keys());
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
}

TEST_P(KeyringCommandTest, letsOneOfSeveralLoginsWin)
{
    startKeyring();
    std::vector<std::unique_ptr<tests::ToolRun>> runs;
    for (int i = 0; i < 3; ++i)
        runs.push_back(start(loginToKeyring()));
    for (const auto& one : runs)
        one->sendInput(input());
    int givenUp = 0;
    for (const auto& one : runs) {
        givenUp += one->hasGivenUpWaiting();
        EXPECT_TRUE(one->status() == 0 || one->hasGivenUpWaiting()) << one->error().toStdString();
    }
    EXPECT_LT(givenUp, 3);
    // What gives up takes back what is in the keyring, whoever put it there.
    if (givenUp > 0)
        logInHere();
    noteSecret();
    EXPECT_EQ(settings(), withLogin());
    EXPECT_EQ(runAndKeep(words("whoami")).status, 0);
}

TEST_P(KeyringCommandTest, isInterruptedWhileTheKeyringAsks)
{
    startKeyring();
    logInHere();
    server.forgetRequests();
    keyring.hold();
    const auto before = keyring.callers();
    const auto tool = start(words("whoami"));
    tool->sendInput({});
    ASSERT_TRUE(tests::waitUntil([&] { return keyring.callers() > before; }));
    tool->sendSignal(SIGINT);
    EXPECT_EQ(tool->status(), 130);
    EXPECT_THAT(server.requests(), IsEmpty());
    keyring.release();
    EXPECT_EQ(runAndKeep(words("whoami")).status, 0);
}

} // namespace
