// Every job of the tool with every option that says how servers are reached or what is shown, in every way to sign in.

#include "tests/cli/CommandTest.h"
#include "tests/kit/LoopbackProxy.h"
#include "tests/kit/SignInWay.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <tuple>

namespace {

using namespace Qt::StringLiterals;
using standin::Tls;
using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tests::LoopbackProxy;
using tests::SignInWay;
using tests::words;

class EveryOptionTest;

struct Choice
{
    const char* name;
    /// What the user says with every command, or with `attachments` alone.
    QStringList (*options)(EveryOptionTest& test);
    QStringList optionsOfTheList;
    QString (*address)(const EveryOptionTest& test);
    /// What is to be seen of the choice once every job is done.
    void (*expect)(const EveryOptionTest& test);
    Tls tls = Tls::none;
    QString document = u"plan.tessaloom"_s;
    /// The names in the list, once that is attached beside an older document.
    QStringList listed = {u"plan.tessaloom"_s, u"older.tessaloom"_s};
};

std::ostream& operator<<(std::ostream& out, const Choice& choice)
{
    return out << choice.name;
}

using ChoiceAndWay = std::tuple<Choice, SignInWay>;

std::string nameOf(const testing::TestParamInfo<ChoiceAndWay>& info)
{
    return std::string(std::get<Choice>(info.param).name) + '_' + std::get<SignInWay>(info.param).name;
}

class EveryOptionTest : public testing::WithParamInterface<ChoiceAndWay>, public tests::CommandTest
{
public:
    using CommandTest::environment;
    using CommandTest::path;
    using CommandTest::server;
    using CommandTest::writeFile;

    QString at(const char* scheme) const
    {
        return u"%1://localhost:%2"_s.arg(QLatin1String(scheme)).arg(server.port());
    }
    QString addressOfTheProxy(const char* scheme) const
    {
        return u"%1://anna:of-the-proxy@127.0.0.1:%2"_s.arg(QLatin1String(scheme)).arg(proxy.port());
    }
    const std::string& shown() const { return m_shown; }

    LoopbackProxy proxy{server.port(), "anna:of-the-proxy"};

protected:
    EveryOptionTest()
        : CommandTest({.tls = choice().tls})
    {
        for (const char* variable : {"http_proxy", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY", "no_proxy",
                                     "NO_PROXY", "SSL_CERT_FILE", "SSL_CERT_DIR"})
            environment.remove(QLatin1String(variable));
        attach("older.tessaloom", "older", "2001-01-01T00:00:00.000+0000");
        m_options = choice().options(*this);
    }

    static const Choice& choice() { return std::get<Choice>(GetParam()); }
    static const SignInWay& way() { return std::get<SignInWay>(GetParam()); }

    /// What succeeds; answers what it printed.
    QByteArray runHere(const QStringList& command, const QByteArray& input = {})
    {
        const Result result = run(m_options + command, input);
        EXPECT_EQ(result.status, 0) << command.join(u' ').toStdString() << '\n' << result;
        m_shown += (result.output + result.error).toStdString();
        return result.output;
    }
    void logInHere()
    {
        QStringList command = {u"login"_s, choice().address(*this)};
        if (way().user[0])
            command << QLatin1String(way().user);
        runHere(command << (way().isByToken ? u"--token-stdin"_s : u"--password-stdin"_s),
                QByteArray(way().secret) + '\n');
    }
    QStringList namesListed()
    {
        QStringList names;
        const auto output = runHere(words("attachments ABC-1 --json") + choice().optionsOfTheList);
        for (const QJsonValue attachment : QJsonDocument::fromJson(output).array())
            names.append(attachment.toObject().value(u"name"_s).toString());
        return names;
    }

    void expectRequestsOfThisWay() const
    {
        ASSERT_THAT(server.requests(), Not(IsEmpty()));
        for (const auto& request : server.requests()) {
            EXPECT_EQ(request.header("Authorization"), way().authorization()) << request.target;
            EXPECT_LE(request.headerCount("Cookie"), way().isByToken ? 0 : 1) << request.target;
        }
    }
    void expectSecretsInTheirStoreAlone() const
    {
        const QString store = environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s;
        const QString home = QFileInfo(environment.value(u"XDG_CONFIG_HOME"_s)).path();
        for (const QByteArray& form : way().formsOfToken()) {
            EXPECT_THAT(shown(), Not(HasSubstr(form.toStdString())));
            const bool mayBeSaved = form == way().secret;
            EXPECT_EQ(tests::filesWith({form}, home), mayBeSaved ? QStringList(store) : QStringList());
            EXPECT_EQ(tests::filesWith({form}, path({})), QStringList());
        }
        EXPECT_THAT(shown(), Not(HasSubstr("of-the-proxy")));
        EXPECT_EQ(tests::filesWith({"of-the-proxy"}, home), QStringList());
    }

private:
    QStringList m_options;
    std::string m_shown;
};

std::vector<Choice> choices()
{
    using Test = EveryOptionTest;
    const auto none = [](Test&) { return QStringList(); };
    const auto nothing = [](const Test&) {};
    const auto direct = [](const Test& test) { return test.at("http"); };
    const auto byProxy = [](const Test&) { return u"http://only-the-proxy-knows.test"_s; };
    const auto asksTheProxy = [](const Test& test) {
        EXPECT_THAT(test.proxy.asked(), Not(IsEmpty()));
        EXPECT_THAT(test.proxy.asked(), Each(HasSubstr("only-the-proxy-knows.test")));
    };
    return {
        {"none", none, {}, direct, nothing},
        {"documents", none, {u"--documents"_s, u"odt"_s}, direct, nothing, Tls::none, u"plan.odt"_s, {u"plan.odt"_s}},
        {"allDocuments",
         none,
         {u"--documents"_s, u"all"_s},
         direct,
         nothing,
         Tls::none,
         u"plan"_s,
         {u"plan"_s, u"older.tessaloom"_s}},
        {"all", none, {u"--all"_s}, direct, nothing, Tls::none, u"plan"_s, {u"older.tessaloom"_s, u"plan"_s}},
        {"verbose",
         [](Test&) { return QStringList{u"--verbose"_s}; },
         {},
         direct,
         [](const Test& test) {
             EXPECT_THAT(test.shown(), HasSubstr("uploadFileInIssue path file: "));
             EXPECT_THAT(test.shown(), HasSubstr("didFinishDownloadingToURL: "));
         }},
        {"route",
         [](Test& test) {
             return QStringList{u"--connect-to"_s,
                                u"only-a-route-knows.test:80:127.0.0.1:%1"_s.arg(test.server.port())};
         },
         {},
         [](const Test&) { return u"http://only-a-route-knows.test"_s; },
         [](const Test& test) {
             for (const auto& request : test.server.requests())
                 EXPECT_EQ(request.header("Host"), "only-a-route-knows.test") << request.target;
         }},
        {"userAgent",
         [](Test&) {
             return QStringList{u"--user-agent"_s, u"Weaver/2.1"_s};
         },
         {},
         direct,
         [](const Test& test) {
             for (const auto& request : test.server.requests())
                 EXPECT_EQ(request.header("User-Agent"), "Weaver/2.1") << request.target;
         }},
        {"proxy",
         [](Test& test) {
             return QStringList{u"--proxy"_s, test.addressOfTheProxy("http")};
         },
         {},
         byProxy,
         asksTheProxy},
        {"socksProxy",
         [](Test& test) {
             return QStringList{u"--proxy"_s, test.addressOfTheProxy("socks5h")};
         },
         {},
         byProxy,
         asksTheProxy},
        {"proxyOfTheEnvironment",
         [](Test& test) {
             test.environment.insert(u"http_proxy"_s, test.addressOfTheProxy("http"));
             return QStringList();
         },
         {},
         byProxy,
         asksTheProxy},
        {"noProxy",
         [](Test& test) {
             test.environment.insert(u"http_proxy"_s, test.addressOfTheProxy("http"));
             return QStringList{u"--proxy"_s, QString()};
         },
         {},
         direct,
         [](const Test& test) { EXPECT_THAT(test.proxy.asked(), IsEmpty()); }},
        {"authorities",
         [](Test& test) {
             test.writeFile(u"own.pem"_s, QByteArray::fromStdString(test.server.certificate()));
             return QStringList{u"--cacert"_s, test.path(u"own.pem"_s)};
         },
         {},
         [](const Test& test) { return test.at("https"); },
         nothing,
         Tls::selfSigned},
    };
}

INSTANTIATE_TEST_SUITE_P(All, EveryOptionTest,
                         testing::Combine(testing::ValuesIn(choices()), testing::ValuesIn(tests::signInWays())),
                         nameOf);

TEST_P(EveryOptionTest, doesEveryJob)
{
    logInHere();
    EXPECT_THAT(runHere(words("session --json")).toStdString(), HasSubstr("true"));
    EXPECT_THAT(runHere(words("session")).toStdString(), HasSubstr("server"));
    EXPECT_THAT(runHere(words("whoami")).toStdString(), HasSubstr("Anna Lindqvist"));
    writeFile(choice().document, "bytes");
    runHere({u"upload"_s, u"ABC-1"_s, choice().document});
    EXPECT_EQ(namesListed(), choice().listed);
    runHere({u"download"_s, u"ABC-1"_s, choice().document, u"--to"_s, u"fetched"_s});
    EXPECT_EQ(readFile(u"fetched"_s), "bytes");
    expectSecretsInTheirStoreAlone();
    runHere(words("logout"));
    EXPECT_EQ(tests::filesWith(way().formsOfToken(), QFileInfo(environment.value(u"XDG_CONFIG_HOME"_s)).path()),
              QStringList());
    expectRequestsOfThisWay();
    choice().expect(*this);
}

} // namespace
