#include "platform/foundation/os/FileLock.h"
#include "tests/cli/CommandTest.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <csignal>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using testing::HasSubstr;
using tests::Jira;
using tests::words;

/// A server, and a way to log in there.
struct Way
{
    const char* name;
    const char* address;
    /// Empty for a personal access token.
    const char* user;
    /// Null for a password.
    const char* token;
    standin::Options options;
};

std::ostream& operator<<(std::ostream& out, const Way& way)
{
    return out << way.name;
}

constexpr char plain[] = "http://jira.example.test/";
constexpr char whole[] = "http://jira.example.test:8080/jira";

class SignInTest : public testing::WithParamInterface<Way>, public tests::CommandTest
{
protected:
    SignInTest()
        : CommandTest(GetParam().options)
    {
        environment.insert(u"QT_LOGGING_RULES"_s, u"*=true"_s);
    }
    ~SignInTest() override { expectTheTokenInItsStoreOnly(); }

    static bool isByToken() { return GetParam().token != nullptr; }
    static QByteArray secret() { return isByToken() ? GetParam().token : Jira::password; }
    static std::string authorization()
    {
        if (!isByToken())
            return {};
        const QByteArray pair = QByteArray(GetParam().user) + ':' + GetParam().token;
        return GetParam().user[0] ? "Basic " + pair.toBase64().toStdString() : "Bearer " + secret().toStdString();
    }
    static QStringList login()
    {
        QStringList command = {u"login"_s, QLatin1String(GetParam().address)};
        if (GetParam().user[0])
            command << QLatin1String(GetParam().user);
        return command << (isByToken() ? u"--token-stdin"_s : u"--password-stdin"_s);
    }
    QString settingsPath() const { return environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s; }

    /// Keeps what the run shows for the search.
    Result runAndKeep(const QStringList& command, const QByteArray& input = {})
    {
        const Result result = run(command, input);
        m_shown += result.output + result.error;
        return result;
    }
    void logInHere() { ASSERT_EQ(runAndKeep(login(), secret() + '\n'), Result({0, {}, {}})); }

    void expectTheTokenInItsStoreOnly()
    {
        if (!isByToken())
            return;
        const QByteArrayList forms = {secret(), secret().toBase64(), QByteArray::fromStdString(authorization())};
        for (const QByteArray& form : forms)
            EXPECT_FALSE(m_shown.contains(form)) << m_shown.toStdString();
        for (const QString& folder : {environment.value(u"XDG_CONFIG_HOME"_s), environment.value(u"XDG_DATA_HOME"_s),
                                      environment.value(u"TMPDIR"_s), path({})}) {
            QDirIterator entry(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
            while (entry.hasNext()) {
                const QString file = entry.next();
                for (const QByteArray& form : forms)
                    EXPECT_TRUE(file == settingsPath() || !readFile(file).contains(form)) << file.toStdString();
            }
        }
    }

    /// Everything below the server's address, by this way and no other.
    void expectRequestsOfThisWay() const
    {
        const bool isWhole = GetParam().address == whole;
        ASSERT_FALSE(server.requests().empty());
        for (const auto& request : server.requests()) {
            if (request.header("Host") == "other.example.test") {
                EXPECT_EQ(request.headerCount("Authorization") + request.headerCount("Cookie"), 0) << request.target;
                continue;
            }
            EXPECT_EQ(request.header("Host"), isWhole ? "jira.example.test:8080" : "jira.example.test");
            EXPECT_EQ(request.target.starts_with("/jira/"), isWhole) << request.target;
            EXPECT_EQ(request.header("Authorization"), authorization()) << request.target;
            const bool isFirst = request.path == server.requests().front().path && request.method == "POST";
            EXPECT_EQ(request.headerCount("Cookie"), isByToken() || isFirst ? 0 : 1) << request.target;
        }
    }

private:
    QByteArray m_shown;
};

const std::vector<Way> byPassword = {
    {"password", plain, Jira::user, nullptr, {}},
    {"passwordAtWholeAddress", whole, Jira::user, nullptr, {.contextPath = "/jira"}},
};
const std::vector<Way> byToken = {
    {"basic", plain, Jira::email, Jira::apiToken, {}},
    {"bearer", plain, "", Jira::accessToken, {}},
    {"basicAtWholeAddress", whole, Jira::email, Jira::apiToken, {.contextPath = "/jira"}},
    {"bearerAtWholeAddress", whole, "", Jira::accessToken, {.contextPath = "/jira"}},
};
const Way cloud = {
    "cloud", plain, Jira::email, Jira::apiToken, {.isCloud = true, .contentsBase = "http://other.example.test"}};

INSTANTIATE_TEST_SUITE_P(Password, SignInTest, testing::ValuesIn(byPassword), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Token, SignInTest, testing::ValuesIn(byToken), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Cloud, SignInTest, testing::Values(cloud), testing::PrintToStringParamName());

TEST_P(SignInTest, doesEveryJob)
{
    logInHere();
    EXPECT_EQ(runAndKeep(words("session")).status, 0);
    EXPECT_THAT(runAndKeep(words("whoami")).output.toStdString(), HasSubstr("Anna Lindqvist"));
    writeFile(u"plan.tessaloom"_s, "bytes");
    EXPECT_EQ(runAndKeep(words("upload ABC-1 plan.tessaloom")), Result({0, {}, {}}));
    EXPECT_THAT(runAndKeep(words("attachments ABC-1")).output.toStdString(), HasSubstr("plan.tessaloom"));
    EXPECT_EQ(runAndKeep(words("download ABC-1 plan.tessaloom --to fetched")).status, 0);
    EXPECT_EQ(readFile(u"fetched"_s), "bytes");
    EXPECT_EQ(runAndKeep(words("logout")), Result({0, {}, {}}));
    EXPECT_FALSE(readFile(settingsPath()).contains(isByToken() ? secret() : QByteArray("jiraUrl")));
    EXPECT_EQ(runAndKeep(words("whoami")).status, 1);
    expectRequestsOfThisWay();
}

TEST_P(SignInTest, showsTheLogWithoutTheToken)
{
    const QStringList verbose = {u"--verbose"_s};
    writeFile(u"plan.tessaloom"_s, "bytes");
    const Result shown = runAndKeep(verbose + login(), secret() + '\n');
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.error.contains(secret()), !isByToken());
    for (const char* command : {"session", "whoami", "upload ABC-1 plan.tessaloom", "attachments ABC-1",
                                "download ABC-1 plan.tessaloom --to fetched", "session --json", "logout"}) {
        const Result result = runAndKeep(verbose + words(command));
        EXPECT_EQ(result.status, 0) << command;
        EXPECT_TRUE(command == std::string_view("logout") || result.error.contains("Error task")) << command;
    }
}

TEST_P(SignInTest, isSavedForTheUserAlone)
{
    logInHere();
    EXPECT_EQ(QFileInfo(settingsPath()).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    const QJsonObject saved = QJsonDocument::fromJson(readFile(settingsPath())).object();
    EXPECT_EQ(saved.value(u"jiraUrl"_s).toString(), QLatin1String(GetParam().address));
    EXPECT_EQ(saved.contains(u"signInToken"_s), isByToken());
    EXPECT_EQ(saved.contains(u"kSessionValue"_s), !isByToken());
}

TEST_P(SignInTest, tellsOfTheSession)
{
    logInHere();
    const QString shown = QLatin1String(GetParam().address) + (GetParam().address == whole ? u"/"_s : QString());
    const QJsonObject json = QJsonDocument::fromJson(runAndKeep(words("session --json")).output).object();
    EXPECT_EQ(json.value(u"valid"_s), QJsonValue(true));
    EXPECT_EQ(json.value(u"server"_s).toString(), shown);
    EXPECT_EQ(json.value(u"loginCount"_s).isNull(), isByToken());
    EXPECT_EQ(json.size(), 6);
    const QByteArray text = runAndKeep(words("session")).output;
    EXPECT_TRUE(text.startsWith("server")) << text.toStdString();
    EXPECT_TRUE(text.contains(shown.toUtf8())) << text.toStdString();
    if (isByToken()) {
        EXPECT_TRUE(text.contains(GetParam().user[0] ? "API token of anna@example.test\n" : "personal access token\n"))
            << text.toStdString();
    }
}

TEST_P(SignInTest, thatIsRefusedKeepsTheOneBefore)
{
    logInHere();
    const QByteArray before = readFile(settingsPath());
    const Result refused = runAndKeep(login(), "wrong\n");
    EXPECT_EQ(refused, Result({1,
                               {},
                               isByToken() ? "The server does not accept this token.\n"
                                           : "The operation couldn’t be completed. (invalid sessioin error 401.)\n"}));
    EXPECT_EQ(readFile(settingsPath()), before);
    EXPECT_EQ(runAndKeep(words("whoami")).status, 0);
}

class ChangeOfSignIn : public SignInTest
{
};

INSTANTIATE_TEST_SUITE_P(Token, ChangeOfSignIn, testing::ValuesIn(byToken), testing::PrintToStringParamName());

TEST_P(ChangeOfSignIn, leavesNothingOfTheOtherBehind)
{
    const QStringList password = {u"login"_s, QLatin1String(GetParam().address), u"anna"_s, u"--password-stdin"_s};
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(runAndKeep(password, "secret\n"), Result({0, {}, {}}));
        EXPECT_EQ(server.lastRequest().headerCount("Authorization"), 0);
        EXPECT_FALSE(readFile(settingsPath()).contains("signInToken"));
        EXPECT_EQ(runAndKeep(words("whoami")).status, 0);
        EXPECT_EQ(server.lastRequest().headerCount("Authorization"), 0);
        logInHere();
        EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 0);
        EXPECT_FALSE(readFile(settingsPath()).contains("kSession"));
        EXPECT_EQ(runAndKeep(words("whoami")).status, 0);
        EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 0);
        EXPECT_EQ(server.lastRequest().header("Authorization"), authorization());
    }
}

class TokenLogin : public tests::CommandTest
{
};

TEST_F(TokenLogin, needsAToken)
{
    const QStringList command = words("login http://jira.example.test/ anna --token-stdin");
    EXPECT_EQ(run(command), Result({1, {}, "No token was given.\n"}));
    EXPECT_EQ(run(command, "\n"), Result({1, {}, "No token was given.\n"}));
    EXPECT_EQ(run(command, "a b\n"),
              Result({1, {}, "This is no token: it has blanks, line breaks or other characters that no token has.\n"}));
    EXPECT_EQ(run(command, QByteArray(5000, 'x') + '\n'), Result({1, {}, "The token is too long.\n"}));
    EXPECT_EQ(server.requestCount(), 0U);
}

TEST_F(TokenLogin, isNoLoginByPassword)
{
    EXPECT_EQ(run(words("login http://jira.example.test/ --token-stdin --password-stdin")),
              Result({2, {}, "login takes a password or a token, not both. See tljira --help.\n"}));
    EXPECT_EQ(run(words("login http://jira.example.test/ --password-stdin")),
              Result({2, {}, "login needs USER. See tljira --help.\n"}));
    EXPECT_EQ(run(words("login --token-stdin")), Result({2, {}, "login needs SERVER. See tljira --help.\n"}));
    EXPECT_EQ(run(words("whoami --token")), Result({2, {}, "whoami takes no --token. See tljira --help.\n"}));
}

TEST_F(TokenLogin, asksForTheTokenAtTheTerminalWithoutShowingIt)
{
    const std::pair<const char*, QByteArray> prompts[] = {
        {"login http://jira.example.test:8080/ anna --token", "API token of anna at jira.example.test:8080: "},
        {"login http://jira.example.test/ --token", "Personal access token for jira.example.test: "}};
    for (const auto& [command, prompt] : prompts) {
        const auto tool = startOnTerminal(words(command));
        ASSERT_TRUE(tool->waitFor(prompt)) << command;
        EXPECT_FALSE(tool->echoes());
        tool->type(QByteArray(prompt.startsWith("API") ? Jira::apiToken : Jira::accessToken) + '\n');
        EXPECT_EQ(tool->status(), 0);
        EXPECT_EQ(tool->shown(), prompt + "\r\n");
        EXPECT_EQ(run(words("whoami")).status, 0);
    }
}

TEST_F(TokenLogin, saysWhatCloudWants)
{
    server.misbehave(Match::next(), Fault().status(403, R"({"error":"x"})", "application/json"));
    EXPECT_EQ(run(words("login http://jira.example.test/ --token-stdin"), "hers-and-wrong\n"),
              Result({1,
                      {},
                      "The server denies access with this token alone. Jira Cloud wants your e-mail address with "
                      "it.\n"}));
}

TEST_F(TokenLogin, takesTheTokenOfOneServerToNoOther)
{
    const QByteArray token = QByteArray(Jira::accessToken) + '\n';
    ASSERT_EQ(run(words("login http://jira.example.test/ --token-stdin"), token).status, 0);
    ASSERT_EQ(run(words("login http://other.example.test/ --token-stdin"), "wrong\n").status, 1);
    EXPECT_EQ(server.lastRequest().header("Authorization"), "Bearer wrong");
    ASSERT_EQ(run(words("login http://other.example.test/ anna --password-stdin"), "secret\n").status, 0);
    EXPECT_EQ(server.lastRequest().headerCount("Authorization"), 0);
}

/// Logins at two servers in turn, by a token at the one and by a password at the other.
class KilledLogin : public TokenLogin
{
protected:
    std::unique_ptr<tests::ToolRun> startLogin(bool isByToken) const
    {
        auto tool = start(words(isByToken ? "login http://a.example.test/ --token-stdin"
                                          : "login http://b.example.test/ anna --password-stdin"));
        tool->sendInput(QByteArray(isByToken ? Jira::accessToken : Jira::password) + '\n');
        return tool;
    }

    void expectOneLoginOrTheOther() const
    {
        const QByteArray file = readFile(environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s);
        const QJsonObject saved = QJsonDocument::fromJson(file).object();
        const QStringList withToken = {u"jiraUrl"_s, u"signInToken"_s};
        const QStringList withSession = {u"jiraUrl"_s, u"kSessionName"_s, u"kSessionValue"_s};
        const bool isByToken = saved.value(u"jiraUrl"_s).toString() == u"http://a.example.test/";
        EXPECT_EQ(saved.keys(), isByToken ? withToken : withSession) << file.toStdString();
    }
};

TEST_F(KilledLogin, savesAllOfItOrNothing)
{
    ASSERT_EQ(startLogin(true)->status(), 0);
    for (int round = 0; round < 8; ++round) {
        for (const bool isByToken : {false, true}) {
            const auto requests = server.requestCount();
            const auto tool = startLogin(isByToken);
            ASSERT_TRUE(tests::waitUntil([&] { return server.requestCount() > requests; }));
            tool->sendSignal(SIGKILL);
            tool->status();
            expectOneLoginOrTheOther();
        }
    }
}

TEST_F(TokenLogin, isNotForgottenUnnoticedByALogoutThatFails)
{
    const QString settings = environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s;
    ASSERT_EQ(run(words("login http://jira.example.test/ --token-stdin"), QByteArray(Jira::accessToken) + '\n').status,
              0);
    tljira::os::FileLock others;
    ASSERT_FALSE(others.lockExisting((settings + u".lock"_s).toStdString()));
    EXPECT_EQ(
        run(words("logout")),
        Result({1, {}, "The server’s address and the token could not be removed: another process keeps it locked.\n"}));
    EXPECT_TRUE(readFile(settings).contains(Jira::accessToken));
}

} // namespace
