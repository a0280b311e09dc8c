#include "client/TokenSignIn.h"

#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "tests/client/TokenTest.h"

#include <QJsonArray>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using tests::Jira;
using tests::TokenKind;

const QString origin = u"http://jira.example.test:80"_s;

class TokenSignInTest : public tests::TokenTest, public testing::WithParamInterface<TokenKind>
{
protected:
    using TokenTest::TokenTest;

    QByteArray fixture() const
    {
        const QString file = QStringLiteral(TESTS_SOURCE_DIR "/fixtures/token.http");
        return tests::contentsOf(file)
            .value_or(QByteArray())
            .replace("${USER_AGENT}", client->session()->configuration().userAgent.toUtf8())
            .replace("${AUTHORIZATION}", QByteArray::fromStdString(GetParam().authorization));
    }

    void logInWith(const QString& name, const QString& token)
    {
        events.clear();
        client->login(name, token, loginCallBack());
        ASSERT_TRUE(waitForEvents(2));
    }

    void logIn() { logInWith(QLatin1String(GetParam().user), QLatin1String(GetParam().token)); }
    void check()
    {
        events.clear();
        client->updateSession(loginCallBack());
        ASSERT_TRUE(waitForEvents(2));
    }
    QString text() const { return error ? error->localizedDescription() : QString(); }
};

INSTANTIATE_TEST_SUITE_P(Both, TokenSignInTest, testing::Values(tests::apiToken(), tests::accessToken()),
                         testing::PrintToStringParamName());

TEST_P(TokenSignInTest, asksForTheCurrentUser)
{
    logIn();
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(QByteArray::fromStdString(server.lastRequest().head + server.lastRequest().body), fixture());
    EXPECT_EQ(client->jaSession(), session);
    EXPECT_EQ(session->sessionName(), std::nullopt);
}

TEST_P(TokenSignInTest, leavesOutBlanksAroundWhatWasPasted)
{
    logInWith(u' ' + QLatin1String(GetParam().user) + u"\t"_s, QLatin1String(GetParam().token) + u" \r\n"_s);
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
    EXPECT_EQ(QByteArray::fromStdString(server.lastRequest().head), fixture());
    EXPECT_EQ(onDisk(), saved(Jira::address, origin, GetParam()));
}

TEST_P(TokenSignInTest, writesTheStatusOfTheAnswerToTheLog)
{
    logIn();
    EXPECT_THAT(log.lines(), testing::Contains(u"Sign-in by token: 200"_s));
    logInWith(QLatin1String(GetParam().user), u"wrong"_s);
    EXPECT_THAT(log.lines(), testing::Contains(u"Sign-in by token: 401"_s));
}

TEST_P(TokenSignInTest, isSavedWithItsAddressForTheUserAlone)
{
    logIn();
    EXPECT_EQ(onDisk(), saved(Jira::address, origin, GetParam()));
    EXPECT_EQ(QFile::permissions(settingsPath()) & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
}

TEST_P(TokenSignInTest, isRefusedInWords)
{
    const std::vector<std::pair<Fault, QString>> refusals = {
        {Fault().status(401, R"({"errorMessages":["no"]})", "application/json"),
         u"The server does not accept this token."_s},
        {Fault().status(403, "<html>", "text/html"),
         GetParam().user[0] ? u"The server denies access with this token."_s
                            : u"The server denies access with this token alone. Jira Cloud wants your e-mail address "
                              "with it."_s},
        {Fault().status(200, "<html>Log in</html>", "text/html"), u"What answers at this address is not Jira."_s},
        {Fault().status(200, "[]", "application/json"), u"What answers at this address is not Jira."_s},
        {Fault().status(200, "null", "application/json"), u"What answers at this address is not Jira."_s},
        {Fault().status(500, "{}", "application/json"),
         u"The operation couldn’t be completed. (invalid sessioin error 500.)"_s}};
    for (const auto& [fault, words] : refusals) {
        server.misbehave(Match::next(), fault);
        logIn();
        EXPECT_THAT(events, ElementsAre(HasSubstr("nil, invalid sessioin "), "invalid")) << words.toStdString();
        EXPECT_EQ(text(), words);
        EXPECT_EQ(client->jaSession(), nullptr);
        EXPECT_EQ(onDisk(), (QJsonObject{{u"jiraUrl"_s, Jira::address}}));
    }
}

TEST_P(TokenSignInTest, keepsWhatTheServerSaysOfARefusal)
{
    server.misbehave(Match::next(), Fault().status(401, R"({"errorMessages":["no"]})", "application/json"));
    logIn();
    EXPECT_EQ(error->code, 401);
    EXPECT_EQ((*error->userInfo)[u"errorMessages"], QJsonArray{u"no"_s});
}

TEST_P(TokenSignInTest, withAWrongTokenIsRefused)
{
    logInWith(QLatin1String(GetParam().user), u"wrong"_s);
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
    EXPECT_EQ(onDisk(), (QJsonObject{{u"jiraUrl"_s, Jira::address}}));
}

TEST_P(TokenSignInTest, thatIsRefusedKeepsTheTokenBefore)
{
    signIn(GetParam());
    logInWith(QLatin1String(GetParam().user), u"wrong"_s);
    EXPECT_THAT(server.lastRequest().header("Authorization"), testing::Not(HasSubstr(GetParam().authorization)));
    EXPECT_EQ(onDisk(), saved(Jira::address, origin, GetParam()));
}

TEST_P(TokenSignInTest, withoutAnAnswerTellsOnlyTheCaller)
{
    client->setHost(Jira::deadAddress);
    client->login(QLatin1String(GetParam().user), QLatin1String(GetParam().token), loginCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("nil, NSURLErrorDomain -1004"));
}

TEST_P(TokenSignInTest, withoutAServerFailsInTheTransport)
{
    client->setHost(u"jira.example.test"_s);
    client->login(QLatin1String(GetParam().user), QLatin1String(GetParam().token), loginCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("nil, NSURLErrorDomain -1002"));
}

TEST_P(TokenSignInTest, neverAsksWithWhatIsNoToken)
{
    for (const QString& token : {u"a\nb"_s, u"a\r\nX-Evil: 1"_s, u"a b"_s, u"ä"_s, u"a\u007f"_s, u""_s, u" \n"_s}) {
        logInWith(QLatin1String(GetParam().user), token);
        EXPECT_THAT(events, ElementsAre(HasSubstr("nil, invalid token "), "invalid")) << token.toStdString();
        EXPECT_FALSE(!token.isEmpty() && text().contains(token));
        EXPECT_EQ(text(), token.trimmed().isEmpty() ? u"No token was given."_s
                                                    : u"This is no token: it has blanks, line breaks or other "
                                                      "characters that no token has."_s);
    }
    logInWith(u"anna:x"_s, u"token"_s);
    EXPECT_EQ(error->code, static_cast<qint64>(client::TokenProblem::NoUser));
    logInWith(u"an\nna"_s, u"token"_s);
    EXPECT_EQ(error->code, static_cast<qint64>(client::TokenProblem::NoUser));
    EXPECT_EQ(text(), u"A user name with a colon or a line break cannot be used with a token."_s);
    // What had been sent would have come before this one.
    logInWith(QLatin1String(GetParam().user), QLatin1String(GetParam().token));
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
    EXPECT_EQ(server.requestCount(), 1U);
}

TEST_P(TokenSignInTest, isCheckedAgainLater)
{
    signIn(GetParam());
    const auto later = JAController::init();
    later->setDelegate(delegate);
    later->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
    EXPECT_EQ(QByteArray::fromStdString(server.lastRequest().head), fixture());
    EXPECT_NE(later->jaSession(), nullptr);
}

TEST_P(TokenSignInTest, isCheckedWithTheOutcomesOfASession)
{
    signIn(GetParam());
    server.addUser(Jira::user, Jira::password);
    check();
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
    server.misbehave(Match::next(), Fault().status(200, "<html>", "text/html"));
    check();
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 200", "invalid"));
    server.resetConnections(2);
    server.misbehave(Match::next(), Fault().reset(standin::Point::responseHead(0)));
    check();
    EXPECT_THAT(events, ElementsAre("invalid", HasSubstr("nil, NSURLErrorDomain ")));
    EXPECT_EQ(onDisk(), saved(Jira::address, origin, GetParam()));
}

TEST_P(TokenSignInTest, isInvalidWithoutAskingWhereThereIsNoToken)
{
    check();
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
    EXPECT_EQ(text(), u"No token is saved for this server."_s);
    signIn(GetParam());
    client->setHost(Jira::otherAddress);
    check();
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
    EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_P(TokenSignInTest, isNeverSentWhereWhatIsSavedIsNone)
{
    records::saveToken({origin, QString::fromLatin1(GetParam().user), u"a\r\nX-Own: b"_s});
    check();
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
    EXPECT_THAT(server.requests(), IsEmpty());
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_EQ(server.lastRequest().headerCount("Authorization"), 0);
    EXPECT_EQ(server.lastRequest().headerCount("X-Own"), 0);
}

TEST_P(TokenSignInTest, goesWithEveryJobAndNoCookieWith)
{
    // A session that the same jar has from before.
    tljira::HTTPCookieStorage::sharedHTTPCookieStorage();
    saveSession("JSESSIONID", server.openSession("anna").c_str());
    signIn(GetParam());
    const qint64 id = server.addAttachment("ABC-1", {.fileName = "a.tessaloom", .bytes = "bytes"});
    client->getCurrentUser(userCallBack());
    client->getIssueObject(u"ABC-1"_s, issueCallBack());
    ASSERT_TRUE(waitForEvents(2));
    client->uploadFileInIssue(writeFile("source", "content"), u"b.tessaloom"_s, u"ABC-1"_s, completionCallBack(), {});
    ASSERT_TRUE(waitForEvents(3));
    client->downloadFile(u"http://jira.example.test/secure/attachment/%1/a.tessaloom"_s.arg(id), downloadCallBack(),
                         path("saved"));
    ASSERT_TRUE(waitForEvents(4));
    EXPECT_THAT(events, testing::UnorderedElementsAre("user, no error", "issue, no error", "no error",
                                                      "(100, 100, no error, YES)"));
    EXPECT_EQ(tests::contentsOf(path("saved")), QByteArray("bytes"));
    EXPECT_EQ(server.attachments("ABC-1").size(), 2U);
    ASSERT_EQ(server.requests().size(), 4U);
    for (const auto& request : server.requests()) {
        EXPECT_EQ(request.header("Authorization"), GetParam().authorization) << request.target;
        EXPECT_EQ(request.headerCount("Authorization"), 1) << request.target;
        EXPECT_EQ(request.headerCount("Cookie"), 0) << request.target;
    }
}

TEST_P(TokenSignInTest, isForgottenByALogoutThatAsksNobody)
{
    signIn(GetParam());
    client->logout(completionCallBack());
    EXPECT_EQ(client->jiraHost(), std::nullopt);
    EXPECT_THAT(events, IsEmpty());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("invalid", "no error"));
    EXPECT_EQ(onDisk(), QJsonObject());
    EXPECT_THAT(server.requests(), IsEmpty());
    client->setHost(Jira::address);
    check();
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
}

TEST_P(TokenSignInTest, leavesNoCookieAtALogout)
{
    const auto& jar = tljira::HTTPCookieStorage::sharedHTTPCookieStorage();
    signIn(GetParam());
    jar->setCookie({.domain = u"other.example.test"_s, .path = u"/"_s, .name = u"a"_s, .value = u"b"_s});
    ASSERT_FALSE(jar->cookies().empty());
    client->logout(nullptr);
    EXPECT_TRUE(jar->cookies().empty());
}

TEST_P(TokenSignInTest, takesThePlaceOfASessionAndTheOtherWayRound)
{
    TLJiraOptions::use({});
    ClientTest::logIn();
    const QJsonObject bySession = onDisk();
    ASSERT_TRUE(bySession.contains(u"kSessionValue"));

    TLJiraOptions::use({.signIn = TLJiraOptions::SignIn::Token});
    signIn(GetParam());
    EXPECT_EQ(onDisk(), saved(Jira::address, origin, GetParam()));
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);

    TLJiraOptions::use({});
    client->login(u"anna"_s, u"secret"_s, loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(server.lastRequest().headerCount("Authorization"), 0);
    EXPECT_EQ(onDisk().keys(), bySession.keys());
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_EQ(server.lastRequest().headerCount("Authorization"), 0);
    EXPECT_THAT(server.lastRequest().header("Cookie"), HasSubstr("JSESSIONID="));
}

TEST_P(TokenSignInTest, isNothingToAHostThatTakesPasswords)
{
    signIn(GetParam());
    TLJiraOptions::use({});
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(server.lastRequest().headerCount("Authorization"), 0);
    client->logout(completionCallBack());
    EXPECT_EQ(onDisk(), QJsonObject());
}

TEST_P(TokenSignInTest, isNotTakenToTheServerOfAnother)
{
    signIn(GetParam());
    client->setHost(Jira::otherAddress);
    EXPECT_EQ(onDisk(), (QJsonObject{{u"jiraUrl"_s, Jira::otherAddress}}));
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(server.lastRequest().headerCount("Authorization"), 0);
    client->setHost(Jira::address);
    EXPECT_EQ(onDisk(), saved(Jira::address, origin, GetParam()));
}

TEST_P(TokenSignInTest, ofAServerThatAnsweredAfterAnotherWasTypedIsNotSavedWithThat)
{
    server.misbehave(Match::next(), Fault().hold(standin::Point::responseHead(0)));
    client->login(QLatin1String(GetParam().user), QLatin1String(GetParam().token), loginCallBack());
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    client->setHost(Jira::otherAddress);
    server.release();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(onDisk(), (QJsonObject{{u"jiraUrl"_s, Jira::otherAddress}}));
    client->setHost(Jira::address);
    EXPECT_EQ(onDisk(), saved(Jira::address, origin, GetParam()));
}

/// Nothing that a server says sends the token elsewhere.
class TokenAwayFromHomeTest : public TokenSignInTest
{
protected:
    void expectOnlyAtHome() const
    {
        ASSERT_FALSE(server.requests().empty());
        for (const auto& request : server.requests()) {
            // A link may name a user of its own.
            const bool isAtHome = request.header("Host") == "jira.example.test";
            EXPECT_EQ(request.header("Authorization") == GetParam().authorization, isAtHome)
                << request.header("Host") << request.target;
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Both, TokenAwayFromHomeTest, testing::Values(tests::apiToken(), tests::accessToken()),
                         testing::PrintToStringParamName());

TEST_P(TokenAwayFromHomeTest, staysAtHomeOnRedirectsOfALogin)
{
    for (const char* address :
         {"http://other.example.test/rest/api/2/myself", "http://jira.example.test:8080/rest/api/2/myself"}) {
        server.forgetRequests();
        server.misbehave(Match::next(), Fault().redirect(address, 307));
        server.misbehave(Match::next(), Fault().status(200, R"({"name":"evil"})", "application/json"));
        logIn();
        EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 200", "invalid")) << address;
        EXPECT_EQ(text(), u"This address leads on to another one, and the token was not sent there. Type the server’s "
                          u"own address."_s);
        EXPECT_EQ(server.requests().size(), 2U);
        expectOnlyAtHome();
        EXPECT_EQ(onDisk(), (QJsonObject{{u"jiraUrl"_s, Jira::address}}));
    }
}

TEST_P(TokenAwayFromHomeTest, staysAtHomeOnRedirectsOfAnUpload)
{
    signIn(GetParam());
    server.misbehave(Match::next(),
                     Fault().redirect("http://other.example.test/rest/api/2/issue/ABC-1/attachments", 307));
    client->uploadFileInIssue(writeFile("source", "content"), u"b"_s, u"ABC-1"_s, completionCallBack(), {});
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(server.requests().size(), 2U);
    expectOnlyAtHome();
}

TEST_P(TokenAwayFromHomeTest, doesNotGoToLinksThatLeadElsewhere)
{
    signIn(GetParam());
    server.misbehave(Match(), Fault().status(200, "bytes"));
    for (const QString& address :
         {u"http://other.example.test/x"_s, u"http://jira.example.test:8080/x"_s,
          u"http://jira.example.test@other.example.test/x"_s, u"http://jira.example.test:80@other.example.test/x"_s}) {
        events.clear();
        server.forgetRequests();
        client->downloadFile(address, downloadCallBack(), path("saved"));
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
        EXPECT_NE(server.lastRequest().header("Host"), "jira.example.test");
        expectOnlyAtHome();
    }
    client->sendGetRequest(u"http://other.example.test/avatar"_s, requestCallBack());
    ASSERT_TRUE(waitForEvents(2));
    expectOnlyAtHome();
}

TEST_P(TokenAwayFromHomeTest, goesToLinksAtHomeHoweverTheyAreSpelled)
{
    signIn(GetParam());
    server.misbehave(Match(), Fault().status(200, "bytes"));
    for (const QString& address : {u"http://JIRA.example.test:80/x"_s, u"http://jira.example.test/a b"_s}) {
        events.clear();
        server.forgetRequests();
        client->downloadFile(address, downloadCallBack(), path("saved"));
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_EQ(server.lastRequest().header("Authorization"), GetParam().authorization) << address.toStdString();
    }
}

class TokenAtCloudTest : public tests::TokenTest
{
protected:
    TokenAtCloudTest()
        : TokenTest({.isCloud = true, .contentsBase = "http://other.example.test"})
    {
    }
};

TEST_F(TokenAtCloudTest, fetchesContentsFromAnotherHostWithoutIt)
{
    signIn(tests::apiToken());
    server.addAttachment("ABC-1", {.fileName = "My Plan.tessaloom", .bytes = "bytes"});
    client->getIssueObject(u"ABC-1"_s, issueCallBack());
    ASSERT_TRUE(waitForEvents(1));
    ASSERT_EQ(issue->attachments().size(), 1U);
    client->downloadFile(issue->attachments()[0]->downloadLink(), downloadCallBack(), path("saved"));
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("issue, no error", "(100, 100, no error, YES)"));
    EXPECT_EQ(tests::contentsOf(path("saved")), QByteArray("bytes"));
    EXPECT_EQ(server.lastRequest().header("Host"), "other.example.test");
    EXPECT_EQ(server.lastRequest().headerCount("Authorization"), 0);
    EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 0);
}

TEST_F(TokenAtCloudTest, isNoAccessToken)
{
    client->login(std::nullopt, QLatin1String(Jira::accessToken), loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 403", "invalid"));
}

} // namespace
