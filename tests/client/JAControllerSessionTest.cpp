#include "constants/JAConstants.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "tests/client/ClientTest.h"

#include <QJsonArray>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QThread>

namespace {

using standin::Fault;
using standin::Match;
using testing::ElementsAre;

class JAControllerSessionTest : public tests::ClientTest
{
protected:
    void login(const char* name, const char* password)
    {
        client->login(QString::fromUtf8(name), QString::fromUtf8(password), loginCallBack());
    }

    void answer(int status, const std::string& text) { server.misbehave(Match(), Fault().status(status, text)); }

    /// An address at which nobody listens.
    void unplug() { client->setJiraHost(QStringLiteral("http://localhost")); }

    void SetUp() override
    {
        // Nobody listens on this port of the loopback interface: it is reserved.
        auto configuration = client->session()->configuration();
        configuration.routes.append(QStringLiteral("localhost:80:127.0.0.1:1"));
        client->setSession(tljira::URLSession::sessionWithConfiguration(configuration, client));
    }
};

TEST_F(JAControllerSessionTest, loginTellsTheDelegateAndThenTheCaller)
{
    login("anna", "secret");
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
    EXPECT_EQ(client->jaSession(), session);
    EXPECT_EQ(session->sessionName(), QStringLiteral("JSESSIONID"));
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("JSESSIONID=") + *session->sessionValue());
}

TEST_F(JAControllerSessionTest, loginHasSavedTheSessionWhenTheDelegateHears)
{
    class Reader : public JAControllerDelegate
    {
    public:
        void jaValidSession() override { seen = JALoginObject::restoreSession(); }
        void jaInvalidSession() override {}
        std::optional<QString> seen;
    };
    const auto reader = std::make_shared<Reader>();
    client->setDelegate(reader);
    login("anna", "secret");
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_NE(reader->seen, std::nullopt);
    EXPECT_EQ(reader->seen, JALoginObject::restoreSession());
}

TEST_F(JAControllerSessionTest, hasTheNewSessionWhenTheDelegateHears)
{
    class Reader : public JAControllerDelegate
    {
    public:
        explicit Reader(JAController& owner)
            : m_client(owner)
        {
        }
        void jaValidSession() override { seen.push_back(m_client.jaSession()); }
        void jaInvalidSession() override {}
        std::vector<std::shared_ptr<const JALoginObject>> seen;

    private:
        JAController& m_client;
    };
    const auto reader = std::make_shared<Reader>(*client);
    client->setDelegate(reader);
    login("anna", "secret");
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(reader->seen, ElementsAre(session));
    EXPECT_NE(session, nullptr);

    const auto before = session;
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(reader->seen, ElementsAre(before, session));
    EXPECT_NE(session, before);
    client->setDelegate(nullptr);
}

TEST_F(JAControllerSessionTest, loginThatIsRefusedTellsTheCallerAndThenTheDelegate)
{
    login("anna", "wrong");
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
    const QJsonObject answered{{QStringLiteral("errorMessages"), QJsonArray{QStringLiteral("Login failed")}},
                               {QStringLiteral("errors"), QJsonObject()}};
    EXPECT_EQ(error->userInfo, QJsonValue(answered));
    EXPECT_EQ(client->jaSession(), nullptr);
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
}

TEST_F(JAControllerSessionTest, loginThatIsRefusedKeepsTheSessionOfBefore)
{
    logIn();
    const auto before = client->jaSession();
    const auto saved = JALoginObject::restoreSession();
    login("anna", "wrong");
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(client->jaSession(), before);
    EXPECT_EQ(JALoginObject::restoreSession(), saved);
}

TEST_F(JAControllerSessionTest, loginWithoutAnAnswerTellsOnlyTheCaller)
{
    unplug();
    login("anna", "secret");
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("nil, NSURLErrorDomain -1004"));
}

TEST_F(JAControllerSessionTest, loginTakesOnlyStatus200ForSuccess)
{
    for (int status : {201, 204, 302, 403, 500}) {
        server.behave();
        events.clear();
        answer(status, status == 204 ? "" : R"({"session": {"name": "N", "value": "V"}})");
        login("anna", "secret");
        ASSERT_TRUE(waitForEvents(2));
        EXPECT_THAT(events, ElementsAre("nil, invalid sessioin " + std::to_string(status), "invalid"));
    }
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
}

TEST_F(JAControllerSessionTest, loginAnsweredWithoutJSONIsASessionOfNothing)
{
    for (const char* text : {"", "<html>Please log in</html>", "{\"session\": ", "[1, 2]", "null", "42"}) {
        server.behave();
        events.clear();
        answer(200, text);
        login("anna", "secret");
        ASSERT_TRUE(waitForEvents(2));
        EXPECT_THAT(events, ElementsAre("valid", "session, no error")) << text;
        EXPECT_EQ(session->sessionName(), std::nullopt) << text;
        EXPECT_EQ(client->jaSession(), session) << text;
    }
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
}

TEST_F(JAControllerSessionTest, loginSendsTheTextsUpToTheFirstThatIsMissing)
{
    answer(401, "");
    client->login(QStringLiteral("anna"), QStringLiteral("secret"), loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(server.lastRequest().body, R"({"password":"secret","username":"anna"})");
    client->login(QStringLiteral("anna"), std::nullopt, loginCallBack());
    ASSERT_TRUE(waitForEvents(4));
    EXPECT_EQ(server.lastRequest().body, R"({"username":"anna"})");
    client->login(std::nullopt, QStringLiteral("secret"), loginCallBack());
    ASSERT_TRUE(waitForEvents(6));
    EXPECT_EQ(server.lastRequest().body, "{}");
    client->login(QString(), QString(), loginCallBack());
    ASSERT_TRUE(waitForEvents(8));
    EXPECT_EQ(server.lastRequest().body, R"({"password":"","username":""})");
}

TEST_F(JAControllerSessionTest, loginWritesRequestResponseAndAnswerToTheLog)
{
    server.misbehave(Match(), Fault().status(401, R"({"a": null})", "application/json"));
    login("anna", "secret");
    ASSERT_TRUE(waitForEvents(2));
    const QStringList lines = log.lines();
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[1], QStringLiteral("{\n    password = secret;\n    username = anna;\n}"));
    EXPECT_THAT(lines[2].toStdString(), testing::HasSubstr("Status Code: 401"));
    EXPECT_EQ(lines[3], QStringLiteral("{\n    a = <null>;\n}"));
}

TEST_F(JAControllerSessionTest, loginWithoutAnAnswerWritesNothingOfThatToTheLog)
{
    unplug();
    login("anna", "secret");
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(log.lines().join(u'\n').toStdString(), testing::Not(testing::HasSubstr("secret")));
}

TEST_F(JAControllerSessionTest, checkOfAGoodSessionTellsTheDelegateAndThenTheCaller)
{
    logIn();
    const auto before = client->jaSession();
    const auto saved = JALoginObject::restoreSession();
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
    EXPECT_EQ(server.lastRequest().method, "GET");
    EXPECT_EQ(server.lastRequest().target, "/rest/auth/1/session");
    EXPECT_EQ(client->jaSession(), session);
    EXPECT_NE(session, before);
    EXPECT_EQ(JALoginObject::restoreSession(), saved);
}

TEST_F(JAControllerSessionTest, checkAnsweredWithoutASessionKeepsTheSavedOneAndIsValid)
{
    saveSession("N", "V");
    answer(200, R"({"self": "x", "name": "anna", "loginInfo": {"loginCount": 3}})");
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
    EXPECT_EQ(session->sessionName(), std::nullopt);
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("N=V"));
}

TEST_F(JAControllerSessionTest, checkAnsweredWithASessionSavesIt)
{
    saveSession("N", "V");
    answer(200, R"({"session": {"name": "N2", "value": "V2"}})");
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("N2=V2"));
}

TEST_F(JAControllerSessionTest, checkOfABadSessionTellsTheCallerAndThenTheDelegate)
{
    logIn();
    const auto before = client->jaSession();
    server.expireSessions();
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
    EXPECT_EQ(client->jaSession(), before);
}

TEST_F(JAControllerSessionTest, checkWithoutAnAnswerTellsTheDelegateAndThenTheCaller)
{
    logIn();
    const auto before = client->jaSession();
    unplug();
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("invalid", "nil, NSURLErrorDomain -1004"));
    EXPECT_EQ(client->jaSession(), before);
}

TEST_F(JAControllerSessionTest, logoutTellsTheDelegateAndThenTheCaller)
{
    logIn();
    client->logout(completionCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("invalid", "no error"));
    EXPECT_EQ(server.lastRequest().method, "DELETE");
    EXPECT_EQ(server.lastRequest().target, "/rest/auth/1/session");
    EXPECT_EQ(server.lastRequest().status, 204);
    EXPECT_EQ(server.sessionCount(), 0u);
}

TEST_F(JAControllerSessionTest, logoutTakesOnlyStatus204ForSuccess)
{
    for (int status : {200, 401, 500}) {
        server.behave();
        events.clear();
        client->setJiraHost(QStringLiteral("http://jira.example.test"));
        answer(status, R"({"a": 1})");
        client->logout(completionCallBack());
        ASSERT_TRUE(waitForEvents(2));
        EXPECT_THAT(events, ElementsAre("invalid", "invalid sessioin " + std::to_string(status)));
        EXPECT_EQ(error->userInfo, std::nullopt);
    }
}

TEST_F(JAControllerSessionTest, logoutWithoutAnAnswerTellsTheCallerTwice)
{
    unplug();
    client->logout(completionCallBack());
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -1004", "invalid", "invalid sessioin 0"));
}

TEST_F(JAControllerSessionTest, logoutForgetsTheAddressBeforeTheAnswer)
{
    client->setHost(QStringLiteral("http://jira.example.test"));
    logIn();
    client->logout(completionCallBack());
    EXPECT_EQ(client->jiraHost(), std::nullopt);
    EXPECT_EQ(tljira::UserDefaults::standardUserDefaults().stringForKey(kJiraURL), std::nullopt);
    EXPECT_TRUE(events.empty());

    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, testing::UnorderedElementsAre("invalid", "no error", "nil, NSURLErrorDomain -1002"));
}

TEST_F(JAControllerSessionTest, logoutCarriesAndKeepsTheSavedSession)
{
    logIn();
    const auto before = client->jaSession();
    const auto saved = JALoginObject::restoreSession();
    client->logout(completionCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(server.lastRequest().header("Cookie"), saved->toStdString());
    EXPECT_EQ(JALoginObject::restoreSession(), saved);
    EXPECT_EQ(client->jaSession(), before);
}

/// A reader of the settings may be a hundredth of a second behind other processes; logging out brings them up to date.
TEST_F(JAControllerSessionTest, logoutCarriesTheSessionThatAnotherProcessHasJustSaved)
{
    saveSession("N", "0");
    ASSERT_TRUE(tljira::UserDefaults::standardUserDefaults().synchronize());
    tljira::UserDefaults otherProcess(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
                                      QStringLiteral("/userdefaults.json"));
    // More than once: nothing can be seen of it where this thread is slower than the settings are allowed to be.
    for (int round = 1; round <= 20; ++round) {
        client->setJiraHost(QStringLiteral("http://jira.example.test"));
        events.clear();
        QThread::msleep(11);
        ASSERT_NE(JALoginObject::restoreSession(), std::nullopt);
        otherProcess.setObject(QString::number(round), QStringLiteral("kSessionValue"));
        ASSERT_TRUE(otherProcess.synchronize());
        client->logout(completionCallBack());
        ASSERT_TRUE(waitForEvents(2));
        EXPECT_EQ(server.lastRequest().header("Cookie"), "N=" + std::to_string(round));
    }
}

TEST_F(JAControllerSessionTest, logoutEmptiesTheJarForEveryHost)
{
    const auto& jar = tljira::HTTPCookieStorage::sharedHTTPCookieStorage();
    logIn();
    jar->setCookie({.domain = QStringLiteral("other.example.test"),
                    .path = QStringLiteral("/"),
                    .name = QStringLiteral("a"),
                    .value = QStringLiteral("b")});
    ASSERT_GE(jar->cookies().size(), 2u);
    client->logout(nullptr);
    EXPECT_TRUE(jar->cookies().empty());
}

TEST_F(JAControllerSessionTest, currentUserIsARecord)
{
    logIn();
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("user, no error"));
    EXPECT_EQ(user->name(), QStringLiteral("anna"));
    EXPECT_EQ(user->email(), QStringLiteral("anna@example.test"));
    EXPECT_EQ(server.lastRequest().target, "/rest/api/2/myself");
}

TEST_F(JAControllerSessionTest, currentUserOfABadSessionIsAnErrorForTheCallerAlone)
{
    saveSession("JSESSIONID", "stale");
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401"));
}

TEST_F(JAControllerSessionTest, currentUserWithoutAnAnswerIsTheTransportsError)
{
    unplug();
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("nil, NSURLErrorDomain -1004"));
}

TEST_F(JAControllerSessionTest, currentUserAnsweredWithALoginPageIsARecordOfNothing)
{
    answer(200, "<html>Please log in</html>");
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("user, no error"));
    EXPECT_EQ(user->name(), std::nullopt);
}

TEST_F(JAControllerSessionTest, issueIsARecordOfItsAttachments)
{
    logIn();
    server.addAttachment("ABC-1",
                         {.fileName = "a.tessaloom", .bytes = "12345", .created = "2017-10-16T10:06:29.399+0200"});
    server.addAttachment("ABC-1", {.fileName = "b.txt", .bytes = "1"});
    client->getIssueObject(QStringLiteral("ABC-1"), issueCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("issue, no error"));
    EXPECT_EQ(server.lastRequest().target, "/rest/api/2/issue/ABC-1");
    ASSERT_EQ(issue->attachments().size(), 2u);
    EXPECT_EQ(issue->attachments()[0]->name(), QStringLiteral("a.tessaloom"));
    EXPECT_EQ(issue->attachments()[0]->size(), 5);
    EXPECT_EQ(issue->attachments()[0]->time(), QStringLiteral("2017-10-16T10:06:29.399+0200"));
    EXPECT_EQ(issue->attachments()[1]->name(), QStringLiteral("b.txt"));
}

TEST_F(JAControllerSessionTest, issueIsAskedForByTheKeyAsItIs)
{
    answer(404, "");
    client->getIssueObject(QStringLiteral(" abc-1 "), issueCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(server.lastRequest().target, "/rest/api/2/issue/%20abc-1%20");
}

TEST_F(JAControllerSessionTest, issueThatIsUnknownIsAnErrorOfCode404)
{
    logIn();
    client->getIssueObject(QStringLiteral("XYZ-9"), issueCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 404"));
    const QJsonObject answered{{QStringLiteral("errorMessages"), QJsonArray{QStringLiteral("Issue Does Not Exist")}},
                               {QStringLiteral("errors"), QJsonObject()}};
    EXPECT_EQ(error->userInfo, QJsonValue(answered));
}

TEST_F(JAControllerSessionTest, issueThatIsHiddenIsAnErrorOfItsStatus)
{
    logIn();
    server.hideIssue("ABC-1", 403);
    client->getIssueObject(QStringLiteral("ABC-1"), issueCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 403"));
}

TEST_F(JAControllerSessionTest, issueWithoutAnAnswerIsTheTransportsError)
{
    unplug();
    client->getIssueObject(QStringLiteral("ABC-1"), issueCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("nil, NSURLErrorDomain -1004"));
}

TEST_F(JAControllerSessionTest, issueAnsweredWithoutJSONHasNoAttachments)
{
    for (const std::string& text : {std::string(), std::string("<html></html>"), std::string(R"({"fields": )"),
                                    std::string(200000, '['), std::string("null")}) {
        server.behave();
        events.clear();
        answer(200, text);
        client->getIssueObject(QStringLiteral("ABC-1"), issueCallBack());
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("issue, no error"));
        EXPECT_TRUE(issue->attachments().empty());
    }
}

TEST_F(JAControllerSessionTest, issueMayHaveThousandsOfAttachments)
{
    constexpr int count = 10000;
    std::string text = R"({"fields": {"attachment": [)";
    for (int number = 0; number < count; ++number) {
        const std::string id = std::to_string(number);
        text += (number ? "," : "") + std::string(R"({"id": ")") + id + R"(", "filename": "file )" + id +
                R"(.tessaloom", "size": )" + id + R"(, "created": "2017-10-16T10:06:29.399+0200"})";
    }
    answer(200, text + "]}}");
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=false"));
    client->getIssueObject(QStringLiteral("ABC-1"), issueCallBack());
    ASSERT_TRUE(waitForEvents(1));
    ASSERT_EQ(issue->attachments().size(), std::size_t(count));
    for (int number = 0; number < count; ++number) {
        const auto& attachment = issue->attachments()[std::size_t(number)];
        ASSERT_EQ(attachment->size(), number);
        ASSERT_EQ(attachment->ID(), QString::number(number));
        ASSERT_TRUE(attachment->date());
    }
}

TEST_F(JAControllerSessionTest, doesWithoutADelegate)
{
    client->setDelegate(nullptr);
    login("anna", "secret");
    ASSERT_TRUE(waitForEvents(1));
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    login("anna", "wrong");
    ASSERT_TRUE(waitForEvents(3));
    client->logout(completionCallBack());
    ASSERT_TRUE(waitForEvents(4));
    EXPECT_THAT(events, ElementsAre("session, no error", "session, no error", "nil, invalid sessioin 401", "no error"));
}

TEST_F(JAControllerSessionTest, doesWithoutCallbacks)
{
    client->login(QStringLiteral("anna"), QStringLiteral("secret"), nullptr);
    ASSERT_TRUE(waitForEvents(1));
    client->updateSession(nullptr);
    ASSERT_TRUE(waitForEvents(2));
    client->getCurrentUser(nullptr);
    client->getIssueObject(QStringLiteral("ABC-1"), nullptr);
    EXPECT_TRUE(waitForEnds(4));
    client->logout(nullptr);
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, ElementsAre("valid", "valid", "invalid"));
}

TEST_F(JAControllerSessionTest, tellsWhoeverIsTheDelegateWhenTheAnswerComes)
{
    std::vector<std::string> heardByLater;
    login("anna", "secret");
    client->setDelegate(std::make_shared<tests::RecordingDelegate>(heardByLater));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("session, no error"));
    EXPECT_THAT(heardByLater, ElementsAre("valid"));
}

TEST_F(JAControllerSessionTest, delegatesMayIgnoreWhatTheClientNeverSends)
{
    class Minimal : public JAControllerDelegate
    {
    public:
        void jaValidSession() override {}
        void jaInvalidSession() override {}
    };
    Minimal minimal;
    JAControllerDelegate& plain = minimal;
    plain.jaControlleLoginCompletion(true, std::nullopt);
    plain.jaControlleLogoutCompletion(false, tljira::Error());
    login("anna", "secret");
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
}

TEST_F(JAControllerSessionTest, callersMayAskForMoreInsideACallback)
{
    client->login(QStringLiteral("anna"), QStringLiteral("secret"), [this](const auto&, const auto&) {
        client->getCurrentUser([this](const auto& newUser, const auto&) {
            user = newUser;
            client->logout(completionCallBack());
        });
    });
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_EQ(user->name(), QStringLiteral("anna"));
    EXPECT_THAT(events, ElementsAre("valid", "invalid", "no error"));
}

} // namespace
