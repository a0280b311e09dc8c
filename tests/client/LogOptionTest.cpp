// What the log of a host that chose one holds, and what it does not.

#include "client/ServerSentence.h"
#include "client/tasks/TransferResult.h"
#include "platform/foundation/LogSwitch.h"
#include "tests/client/TokenTest.h"

#include <QJsonArray>
#include <QJsonObject>

#include <mutex>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Log = TLJiraOptions::Log;
using tests::Jira;
using tests::TokenKind;

/// Not one that stands anywhere by chance.
const QString password = u"p\"ss/wörd+9 & <so>"_s;

/// A host that chose where its log goes, and a user who attaches a document.
class LogOptionTest : public tests::ClientTest
{
protected:
    LogOptionTest() { server.addUser(Jira::user, password.toStdString()); }
    ~LogOptionTest() override { TLJiraOptions::use({}); }

    /// Keeps lines of any thread.
    Log::Function keep()
    {
        return [this](const QString& line) {
            const std::lock_guard lock(m_mutex);
            m_told.append(line);
        };
    }
    QString told() const
    {
        const std::lock_guard lock(m_mutex);
        return m_told.join(u'\n');
    }
    QString shown() const { return log.lines().join(u'\n'); }

    void logInAndAttach()
    {
        events.clear();
        client->login(QString::fromLatin1(Jira::user), password, loginCallBack());
        ASSERT_TRUE(waitForEvents(2));
        ASSERT_THAT(events, ElementsAre("valid", "session, no error"));
        client->uploadFileInIssue(writeFile("source", "content"), u"plan.tessaloom"_s, u"ABC-1"_s, completionCallBack(),
                                  {});
        ASSERT_TRUE(waitForEvents(3));
        tests::drainMainQueue();
        sessionValue = session->sessionValue().value_or(QString()).toStdString();
        ASSERT_NE(sessionValue, "");
    }

    void expectNoSecret(const QString& lines) const
    {
        const std::string text = lines.toStdString();
        for (const QString& form : {password, u"p\\\"ss/wörd"_s, u"p%22ss"_s, u"wörd+9"_s, u"&amp; &lt;so"_s})
            EXPECT_THAT(text, Not(HasSubstr(form.toStdString())));
        EXPECT_THAT(text, Not(HasSubstr(sessionValue)));
        EXPECT_THAT(text, Not(HasSubstr("JSESSIONID=")));
    }

    std::string sessionValue;

private:
    mutable std::mutex m_mutex;
    QStringList m_told;
};

TEST_F(LogOptionTest, isTheDescribedOneUntilAnotherIsChosen)
{
    logInAndAttach();
    EXPECT_THAT(shown().toStdString(), HasSubstr(R"(password = "p\"ss/wörd+9 & <so>";)"));
    EXPECT_THAT(shown().toStdString(), HasSubstr(sessionValue));
    EXPECT_THAT(shown().toStdString(), HasSubstr("JSESSIONID="));
    const QStringList before = log.lines();
    TLJiraOptions::use({.log = Log::on(Log::Secrets::Shown)});
    log.clear();
    client->login(QString::fromLatin1(Jira::user), password, loginCallBack());
    ASSERT_TRUE(waitForEvents(5));
    EXPECT_EQ(log.lines().at(1), before.at(1));
}

TEST_F(LogOptionTest, blanksWhatIsSecretWhereItIsOn)
{
    TLJiraOptions::use({.log = Log::on()});
    logInAndAttach();
    EXPECT_THAT(shown().toStdString(), HasSubstr("    password = ***;\n    username = anna;\n"));
    EXPECT_THAT(shown().toStdString(), HasSubstr("\"Set-Cookie\" = ***"));
    EXPECT_THAT(shown().toStdString(), HasSubstr("value = ***;"));
    EXPECT_THAT(shown().toStdString(), HasSubstr("Status Code: 200"));
    EXPECT_THAT(shown().toStdString(), HasSubstr("uploadFileInIssue path file: " + path("source").toStdString()));
    expectNoSecret(shown());
}

TEST_F(LogOptionTest, goesToAFunctionAndNowhereElse)
{
    TLJiraOptions::use({.log = Log::to(keep())});
    logInAndAttach();
    EXPECT_EQ(log.lines(), QStringList());
    EXPECT_THAT(told().toStdString(), HasSubstr("    password = ***;\n    username = anna;\n"));
    EXPECT_THAT(told().toStdString(), HasSubstr("uploadFileInIssue path file: "));
    expectNoSecret(told());
}

TEST_F(LogOptionTest, goesToAFunctionWithWhatIsSecretWhereTheHostAsksForIt)
{
    TLJiraOptions::use({.log = Log::to(keep(), Log::Secrets::Shown)});
    logInAndAttach();
    EXPECT_EQ(log.lines(), QStringList());
    EXPECT_THAT(told().toStdString(), HasSubstr(R"(password = "p\"ss/wörd+9 & <so>";)"));
    EXPECT_THAT(told().toStdString(), HasSubstr(sessionValue));
}

TEST_F(LogOptionTest, isSilentWhereItIsOff)
{
    for (const Log& off : {Log::off(), Log::to({})}) {
        TLJiraOptions::use({.log = off});
        logInAndAttach();
        EXPECT_EQ(log.lines(), QStringList());
    }
    TLJiraOptions::use({.log = Log::to(keep())});
    tljira::setLogEnabled(false);
    events.clear();
    client->login(QString::fromLatin1(Jira::user), password, loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(told(), QString());
    tljira::setLogEnabled(true);
}

TEST_F(LogOptionTest, hasNoSecretThatTheServerRepeats)
{
    TLJiraOptions::use({.log = Log::on()});
    logInAndAttach();
    const QByteArray percent = QUrl::toPercentEncoding(password);
    const QByteArray form = QByteArray(percent).replace("%20", "+");
    const QByteArray html = password.toHtmlEscaped().toUtf8();
    const QJsonObject answer{{u"errorMessages"_s, QJsonArray{u"no "_s + password, QString::fromUtf8(percent),
                                                             QString::fromUtf8(form), QString::fromUtf8(html)}},
                             {u"session"_s, QString::fromStdString(sessionValue)}};
    const std::string text = QJsonDocument(answer).toJson().toStdString();
    log.clear();
    server.misbehave(Match::on("/rest/auth/1/session"), Fault().status(401, text, "application/json"));
    server.misbehave(Match::on("/rest/api/2/issue/ABC-1/attachments"), Fault().status(403, text, "application/json"));
    events.clear();
    client->login(QString::fromLatin1(Jira::user), password, loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
    // The caller gets what the server said.
    EXPECT_EQ(client::serverSentence(error.value_or(tljira::Error())).left(4 + password.size()),
              u"no "_s + password + u' ');
    client->uploadFileInIssue(writeFile("source", "content"), u"plan.tessaloom"_s, u"ABC-1"_s, completionCallBack(),
                              {});
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(shown().toStdString(), HasSubstr("no ***"));
    EXPECT_THAT(shown().section(u"uploadFileInIssue"_s, 1).toStdString(), HasSubstr(R"("session": "***")"));
    const QString login = shown().section(u"uploadFileInIssue"_s, 0, 0);
    expectNoSecret(login);
    EXPECT_EQ(login.count(u"***"_s), 6) << login.toStdString();
}

TEST_F(LogOptionTest, isForgottenWithThePasswordOnceItHasBeenAnswered)
{
    logInAndAttach();
    TLJiraOptions::use({.log = Log::on()});
    log.clear();
    client->uploadFileInIssue(u"a path with "_s + password, u"plan.tessaloom"_s, u"ABC-1"_s, completionCallBack(), {});
    ASSERT_TRUE(waitForEvents(4));
    EXPECT_THAT(shown().toStdString(), HasSubstr("a path with " + password.toStdString()));
}

/// A server repeats the token in what it says about an error.
class RepeatedTokenTest : public tests::TokenTest, public testing::WithParamInterface<TokenKind>
{
protected:
    void SetUp() override
    {
        signIn(GetParam());
        const QString percent = QString::fromLatin1(QUrl::toPercentEncoding(QString::fromLatin1(GetParam().token)));
        const QJsonObject answer{
            {u"errorMessages"_s, QJsonArray{u"no "_s + token(), percent}},
            {u"errors"_s, QJsonObject{{token(), u"is no good"_s}}},
            {u"error"_s, u"bad "_s + token()},
            {u"header"_s, QString::fromStdString(GetParam().authorization)},
        };
        m_answer = QJsonDocument(answer).toJson(QJsonDocument::Compact).toStdString();
    }

    static QString token() { return QString::fromLatin1(GetParam().token); }

    void refuse(int status = 403)
    {
        server.misbehave(Match::next(), Fault().status(status, m_answer, "application/json"));
        events.clear();
        log.clear();
    }

    void expectTheErrorWithoutIt() const
    {
        ASSERT_TRUE(error.has_value());
        const QJsonObject said = error->userInfo.value_or(QJsonValue()).toObject();
        EXPECT_EQ(said.value(u"errorMessages"_s), QJsonValue(QJsonArray{u"no ***"_s, u"***"_s}));
        EXPECT_EQ(said.value(u"errors"_s), QJsonValue(QJsonObject{{u"***"_s, u"is no good"_s}}));
        EXPECT_EQ(client::serverSentence(*error), u"no *** *** is no good"_s);
        for (const QString& text : {error->domain, error->localizedDescription(),
                                    QString::fromUtf8(QJsonDocument(said).toJson()), log.lines().join(u'\n')}) {
            EXPECT_FALSE(text.contains(token())) << text.toStdString();
            EXPECT_FALSE(text.contains(QString::fromStdString(GetParam().authorization).section(u' ', 1)))
                << text.toStdString();
        }
    }

private:
    std::string m_answer;
};

INSTANTIATE_TEST_SUITE_P(Both, RepeatedTokenTest, testing::Values(tests::apiToken(), tests::accessToken()),
                         testing::PrintToStringParamName());

TEST_P(RepeatedTokenTest, isNotInTheErrorOfALogin)
{
    for (int status : {401, 403, 500}) {
        refuse(status);
        client->login(QLatin1String(GetParam().user), token(), loginCallBack());
        ASSERT_TRUE(waitForEvents(2));
        expectTheErrorWithoutIt();
    }
}

TEST_P(RepeatedTokenTest, isNotInTheErrorOfAQuestion)
{
    refuse();
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    expectTheErrorWithoutIt();
    refuse();
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(1));
    expectTheErrorWithoutIt();
    refuse();
    client->getIssueObject(u"ABC-1"_s, issueCallBack());
    ASSERT_TRUE(waitForEvents(1));
    expectTheErrorWithoutIt();
}

TEST_P(RepeatedTokenTest, isNotInTheErrorOfAnUpload)
{
    for (const Log& chosen : {Log(), Log::on(), Log::on(Log::Secrets::Shown)}) {
        TLJiraOptions::use({.signIn = TLJiraOptions::SignIn::Token, .log = chosen});
        refuse();
        client->uploadFileInIssue(writeFile("source", "content"), u"plan.tessaloom"_s, u"ABC-1"_s, completionCallBack(),
                                  {});
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_EQ(error.value_or(tljira::Error()).domain, u"bad ***"_s);
        EXPECT_THAT(log.lines().join(u'\n').toStdString(), HasSubstr("no ***"));
        expectTheErrorWithoutIt();
    }
}

TEST_P(RepeatedTokenTest, isNotInTheErrorOfADocumentThatIsNone)
{
    const QString file = writeFile("arrived", R"({"errorMessages":["no )" + token().toUtf8() + R"("]})");
    EXPECT_EQ(client::serverSentence(client::notTheDocument(file, u"not the document"_s)), u"no ***"_s);
}

} // namespace
