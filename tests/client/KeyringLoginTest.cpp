#include "client/KeyringLogin.h"

#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "platform/foundation/settings/Keyring.h"
#include "records/SavedLogin.h"
#include "records/TLJiraOptions.h"
#include "tests/client/ClientTest.h"
#include "tests/kit/WithKeyring.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::DesktopKeyring;
using tests::Jira;

const QString application = u"tests"_s;

class KeyringLoginTest : public tests::WithKeyring, public tests::ClientTest
{
protected:
    KeyringLoginTest() { client->setHost(Jira::address); }

    void startKeyring() { ASSERT_TRUE(keyring.start()); }

    void tryToLogIn(const char* secret = GetParam().secret)
    {
        events.clear();
        client->login(QString::fromUtf8(GetParam().user), QString::fromUtf8(secret), loginCallBack());
    }
    void logIn()
    {
        tryToLogIn();
        ASSERT_TRUE(waitForEvents(2));
        ASSERT_THAT(events, ElementsAre("valid", "session, no error"));
        events.clear();
        server.forgetRequests();
    }
    void check()
    {
        events.clear();
        client->updateSession(loginCallBack());
        ASSERT_TRUE(waitForEvents(2));
    }
    void logOut()
    {
        events.clear();
        client->logout(completionCallBack());
        ASSERT_TRUE(waitForEvents(2));
    }
    /// What this process knows goes; the keyring and the settings stay.
    static void beginNextRun() { records::setSecretsInMemory({}); }

    /// As another process does.
    static void putIntoKeyring(const QString& entry)
    {
        bool isWritten = false;
        tljira::Keyring::write(entry, [&](const auto&) { isWritten = true; });
        ASSERT_TRUE(tests::waitUntil([&] { return isWritten; }));
    }
    /// Behind whatever has been asked of the keyring before.
    static QString foundInKeyring()
    {
        std::optional<QString> found;
        tljira::Keyring::read([&](const auto& newText, const auto&) { found = newText.value_or(QString()); });
        EXPECT_TRUE(tests::waitUntil([&] { return found.has_value(); }));
        return found.value_or(QString());
    }
    static void takeBack(const std::optional<records::KeyringEntry>& former)
    {
        bool isTold = false;
        client::takeBackLogin(former, [&](const auto& newError) {
            EXPECT_EQ(newError, std::nullopt);
            isTold = true;
        });
        ASSERT_TRUE(tests::waitUntil([&] { return isTold; }));
    }

    /// Whether the last request says who sends it.
    bool isSigned() const
    {
        return server.lastRequest().headerCount("Cookie") + server.lastRequest().headerCount("Authorization") > 0;
    }
    QString text() const { return error ? error->localizedDescription() : QString(); }

    static QJsonObject onDisk()
    {
        EXPECT_TRUE(records::savedLogin().synchronize());
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
        return QJsonDocument::fromJson(tests::contentsOf(folder + u"/userdefaults.json"_s).value_or(QByteArray()))
            .object();
    }
    static QJsonObject withAddress(const QString& address = Jira::address) { return {{u"jiraUrl"_s, address}}; }
    static QJsonObject withLogin()
    {
        return {{u"jiraUrl"_s, Jira::address}, {u"signInKeyring"_s, GetParam().isByToken ? u"token"_s : u"session"_s}};
    }
};

INSTANTIATE_TEST_SUITE_P(By, KeyringLoginTest, testing::ValuesIn(tests::signInWays()),
                         testing::PrintToStringParamName());

TEST_P(KeyringLoginTest, isInTheKeyringAndInNoFile)
{
    startKeyring();
    logIn();
    const QByteArray secret = DesktopKeyring::secretOf(application);
    ASSERT_FALSE(secret.isEmpty());
    EXPECT_EQ(secret == GetParam().secret, GetParam().isByToken);
    EXPECT_EQ(onDisk(), withLogin());
    EXPECT_THAT(tests::filesWith({secret, secret.toBase64(), GetParam().secret}), IsEmpty());
    for (const QString& line : log.lines())
        EXPECT_FALSE(GetParam().isByToken && line.contains(QString::fromUtf8(secret))) << line.toStdString();
}

TEST_P(KeyringLoginTest, keepsCookiesInMemoryAlone)
{
    startKeyring();
    server.misbehave(Match::next(), Fault().header("Set-Cookie", "remembered=whoever-has-this; Max-Age=86400; Path=/"));
    logIn();
    const auto& jar = client->session()->configuration().HTTPCookieStorage;
    EXPECT_EQ(jar->cookies().empty(), GetParam().isByToken);
    EXPECT_EQ(jar->synchronize(), std::nullopt);
    EXPECT_THAT(tests::filesWith({"whoever-has-this"}), IsEmpty());
}

TEST_P(KeyringLoginTest, isFoundByTheNextRun)
{
    startKeyring();
    logIn();
    const auto& jar = client->session()->configuration().HTTPCookieStorage;
    jar->deleteAllCookies();
    check();
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
    const std::string head = server.lastRequest().head;
    beginNextRun();
    jar->deleteAllCookies();
    check();
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
    EXPECT_EQ(server.lastRequest().head, head);
    EXPECT_TRUE(isSigned());
}

TEST_P(KeyringLoginTest, isThatOfItsServerAlone)
{
    startKeyring();
    logIn();
    client->setHost(Jira::otherAddress);
    EXPECT_EQ(onDisk(), withAddress(Jira::otherAddress));
    check();
    EXPECT_THAT(events, ElementsAre(testing::StartsWith("nil, "), "invalid"));
    EXPECT_TRUE(server.requests().empty() || !isSigned());
    client->setHost(Jira::address);
    EXPECT_EQ(onDisk(), withLogin());
    check();
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
}

TEST_P(KeyringLoginTest, isGoneAfterLoggingOut)
{
    startKeyring();
    logIn();
    logOut();
    EXPECT_THAT(events, ElementsAre("invalid", "no error"));
    EXPECT_EQ(server.requests().size(), GetParam().isByToken ? 0U : 1U);
    EXPECT_THAT(client->session()->configuration().HTTPCookieStorage->cookies(), IsEmpty());
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
    EXPECT_THAT(onDisk(), QJsonObject());
    EXPECT_THAT(records::secretsInMemory(), QJsonObject());
    EXPECT_FALSE(client::isLoginInKeyring());
}

TEST_P(KeyringLoginTest, isLeftAloneByALogoutWhoseSettingsDoNotNameIt)
{
    startKeyring();
    putIntoKeyring(u"of the same application with another home"_s);
    logOut();
    EXPECT_EQ(foundInKeyring(), u"of the same application with another home"_s);
}

TEST_P(KeyringLoginTest, isEndedAtItsServerByANextRunThatLogsOut)
{
    startKeyring();
    logIn();
    beginNextRun();
    client->session()->configuration().HTTPCookieStorage->deleteAllCookies();
    logOut();
    EXPECT_THAT(events, ElementsAre("invalid", "no error"));
    EXPECT_TRUE(GetParam().isByToken || isSigned());
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
}

TEST_P(KeyringLoginTest, isRefusedWhereNoKeyringRuns)
{
    tryToLogIn();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("nil, keyring -3", "invalid"));
    EXPECT_TRUE(text().startsWith(u"The desktop’s keyring cannot be reached. Is one running?"_s))
        << text().toStdString();
    EXPECT_EQ(client->jaSession(), nullptr);
    EXPECT_EQ(onDisk(), withAddress());
    EXPECT_EQ(records::secretsInMemory(), QJsonObject());
    EXPECT_THAT(client->session()->configuration().HTTPCookieStorage->cookies(), IsEmpty());
    EXPECT_THAT(tests::filesWith({GetParam().secret}), IsEmpty());
}

TEST_P(KeyringLoginTest, hasLeftNoCookieWhenTheCallerHearsOfARefusal)
{
    std::optional<std::size_t> cookies;
    client->login(QString::fromUtf8(GetParam().user), QString::fromUtf8(GetParam().secret),
                  [&](const auto&, const auto&) {
                      cookies = client->session()->configuration().HTTPCookieStorage->cookies().size();
                  });
    ASSERT_TRUE(tests::waitUntil([&] { return cookies.has_value(); }));
    EXPECT_EQ(*cookies, 0U);
}

TEST_P(KeyringLoginTest, asksNoKeyringWhereNobodyHasLoggedIn)
{
    check();
    EXPECT_THAT(events, ElementsAre(testing::StartsWith("nil, invalid sessioin"), "invalid"));
    events.clear();
    logOut();
    EXPECT_THAT(events, ElementsAre("invalid", testing::Not(testing::HasSubstr("keyring"))));
}

TEST_P(KeyringLoginTest, staysAsItWasWhenALockedKeyringRefusesAnother)
{
    startKeyring();
    logIn();
    const QByteArray secret = DesktopKeyring::secretOf(application);
    const QJsonObject inMemory = records::secretsInMemory();
    ASSERT_TRUE(keyring.lock());
    tryToLogIn();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("nil, keyring -4", "invalid"));
    EXPECT_EQ(text(), u"The desktop’s keyring is locked. Unlock it and try again."_s);
    EXPECT_EQ(records::secretsInMemory(), inMemory);
    EXPECT_EQ(onDisk(), withLogin());
    keyring.stop();
    startKeyring();
    EXPECT_EQ(DesktopKeyring::secretOf(application), secret);
    check();
    EXPECT_THAT(events, ElementsAre("valid", "session, no error")) << text().toStdString();
}

TEST_P(KeyringLoginTest, staysAsItWasWhenTheServerRefusesAnother)
{
    startKeyring();
    logIn();
    const QByteArray secret = DesktopKeyring::secretOf(application);
    tryToLogIn("wrong");
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
    EXPECT_EQ(DesktopKeyring::secretOf(application), secret);
    EXPECT_EQ(onDisk(), withLogin());
}

TEST_P(KeyringLoginTest, isNotGivenByALockedKeyring)
{
    startKeyring();
    logIn();
    beginNextRun();
    ASSERT_TRUE(keyring.lock());
    check();
    EXPECT_THAT(events, ElementsAre("nil, keyring -5", "invalid"));
    EXPECT_EQ(text(), u"The desktop’s keyring is locked, or your login is no longer in it."_s);
    EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_P(KeyringLoginTest, servesThisProcessOnWhileTheKeyringIsLocked)
{
    startKeyring();
    logIn();
    ASSERT_TRUE(keyring.lock());
    // As another window does when it opens.
    check();
    EXPECT_THAT(events, ElementsAre("nil, keyring -5", "invalid"));
    bool isAnswered = false;
    client->sendGetRequest(client->url(u"rest/api/2/myself"_s),
                           [&](const auto&, const auto&, const auto&) { isAnswered = true; });
    ASSERT_TRUE(tests::waitUntil([&] { return isAnswered; }));
    EXPECT_TRUE(isSigned());
}

TEST_P(KeyringLoginTest, saysThatALockedKeyringGoesOnHoldingIt)
{
    startKeyring();
    logIn();
    ASSERT_TRUE(keyring.lock());
    logOut();
    EXPECT_THAT(events, ElementsAre("invalid", "keyring -6"));
    EXPECT_EQ(text(), u"Your login is still in the desktop’s keyring. Is that running and unlocked?"_s);
    EXPECT_EQ(client->jiraHost(), std::nullopt);
    EXPECT_TRUE(DesktopKeyring::hasTextOf(application));
    keyring.stop();
    startKeyring();
    logOut();
    EXPECT_THAT(events, ElementsAre("invalid", "no error"));
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
    EXPECT_THAT(onDisk(), QJsonObject());
}

TEST_P(KeyringLoginTest, waitsForTheKeyringWithoutHoldingUpAnything)
{
    startKeyring();
    keyring.hold();
    tryToLogIn();
    ASSERT_TRUE(tests::waitUntil([this] { return server.requestCount() == 1; }));
    bool isAnswered = false;
    client->sendGetRequest(client->url(u"rest/api/2/serverInfo"_s),
                           [&](const auto&, const auto&, const auto&) { isAnswered = true; });
    ASSERT_TRUE(tests::waitUntil([&] { return isAnswered; }));
    tests::drainMainQueue();
    EXPECT_THAT(events, IsEmpty());
    EXPECT_EQ(records::secretsInMemory(), QJsonObject());
    keyring.release();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("valid", "session, no error"));
    EXPECT_EQ(onDisk(), withLogin());
}

TEST_P(KeyringLoginTest, isNotForgottenByALogoutThatBeganBeforeIt)
{
    startKeyring();
    logIn();
    beginNextRun();
    keyring.hold();
    bool hasLogoutEnded = false;
    client->logout([&hasLogoutEnded](const auto&) { hasLogoutEnded = true; });
    client->setHost(Jira::address);
    log.clear();
    tryToLogIn();
    // The server has accepted it, and its way into the keyring is behind that of the logout.
    ASSERT_TRUE(tests::waitUntil([this] { return !log.lines().filter(u"200"_s).isEmpty(); }));
    tests::drainMainQueue();
    keyring.release();
    ASSERT_TRUE(tests::waitUntil(
        [this] { return std::find(events.begin(), events.end(), "session, no error") != events.end(); }));
    ASSERT_TRUE(tests::waitUntil([&] { return hasLogoutEnded; }));
    EXPECT_TRUE(DesktopKeyring::hasTextOf(application));
    EXPECT_EQ(onDisk(), withLogin());
    EXPECT_FALSE(records::secretsInMemory().isEmpty());
}

TEST_P(KeyringLoginTest, takesWhatIsInFilesAwayFromThem)
{
    tljira::UserDefaults::standardUserDefaults().keepInMemory({});
    TLJiraOptions::use({});
    JALoginObject::initWithDictionary(
        {{u"session"_s, QJsonObject{{u"name"_s, u"JSESSIONID"_s}, {u"value"_s, u"left-by-an-older-version"_s}}}});
    tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->setCookie({.domain = Jira::address.section(u'/', 2, 2),
                                                                     .path = u"/"_s,
                                                                     .expires = 4'000'000'000,
                                                                     .name = u"old"_s,
                                                                     .value = u"left-as-well"_s});
    ASSERT_EQ(tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->synchronize(), std::nullopt);
    onDisk();
    ASSERT_EQ(tests::filesWith({"left-by-an-older-version", "left-as-well"}).size(), 2);
    chooseKeyring();
    startKeyring();
    logIn();
    EXPECT_EQ(onDisk(), withLogin());
    EXPECT_EQ(tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->synchronize(), std::nullopt);
    EXPECT_THAT(tests::filesWith({"left-by-an-older-version", "left-as-well"}), IsEmpty());
}

TEST_P(KeyringLoginTest, givesWayToOneThatIsSavedInAFile)
{
    startKeyring();
    logIn();
    TLJiraOptions inFiles = TLJiraOptions::inUse();
    inFiles.secrets = TLJiraOptions::Secrets::Settings;
    TLJiraOptions::use(inFiles);
    logIn();
    EXPECT_FALSE(onDisk().contains(u"signInKeyring"_s));
    EXPECT_FALSE(client::isLoginInKeyring());
    ASSERT_TRUE(keyring.lock());
    check();
    EXPECT_THAT(events, ElementsAre("valid", "session, no error")) << text().toStdString();
}

TEST_P(KeyringLoginTest, isNotTakenBackWhereAnotherHasTakenItsPlace)
{
    startKeyring();
    logIn();
    putIntoKeyring(u"of another process"_s);
    takeBack(std::nullopt);
    EXPECT_EQ(foundInKeyring(), u"of another process"_s);
}

TEST_P(KeyringLoginTest, isTakenBackForTheOneBeforeIt)
{
    startKeyring();
    logIn();
    const records::KeyringEntry former{Jira::otherAddress, {{records::savedValueKey, u"former"_s}}};
    takeBack(former);
    EXPECT_EQ(foundInKeyring(), former.text());
}

TEST_P(KeyringLoginTest, isTakenBackWhereNoneWasBefore)
{
    startKeyring();
    logIn();
    takeBack(std::nullopt);
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
}

TEST_P(KeyringLoginTest, isUnreadUntilSomebodyLooks)
{
    EXPECT_FALSE(client::isLoginUnread());
    startKeyring();
    logIn();
    EXPECT_FALSE(client::isLoginUnread());
    beginNextRun();
    EXPECT_TRUE(client::isLoginUnread());
    check();
    EXPECT_FALSE(client::isLoginUnread());
}

TEST_P(KeyringLoginTest, isNotShownToThisServerWhereItIsThatOfAnother)
{
    startKeyring();
    logIn();
    const records::KeyringEntry theirs{Jira::otherAddress, records::secretsInMemory()};
    client->session()->configuration().HTTPCookieStorage->deleteAllCookies();
    for (const QString& entry : {theirs.text(), u"no entry"_s}) {
        putIntoKeyring(entry);
        check();
        EXPECT_THAT(events, ElementsAre("nil, invalid sessioin 401", "invalid"));
        EXPECT_EQ(records::secretsInMemory(), QJsonObject());
        EXPECT_TRUE(server.requests().empty() || !isSigned());
    }
}

TEST_P(KeyringLoginTest, ofAServerThatAnsweredAfterAnotherWasTypedIsNotSavedWithThat)
{
    startKeyring();
    server.misbehave(Match::next(), Fault().hold(Point::responseHead(0)));
    tryToLogIn();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    client->setHost(Jira::otherAddress);
    server.release();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(onDisk(), withAddress(Jira::otherAddress));
    client->setHost(Jira::address);
    EXPECT_EQ(onDisk(), withLogin());
}

TEST_P(KeyringLoginTest, leavesNoCookieInFilesAtALogout)
{
    const auto& inFiles = tljira::HTTPCookieStorage::sharedHTTPCookieStorage();
    startKeyring();
    logIn();
    inFiles->setCookie({.domain = u"other.example.test"_s, .path = u"/"_s, .name = u"a"_s, .value = u"b"_s});
    ASSERT_FALSE(inFiles->cookies().empty());
    logOut();
    EXPECT_THAT(inFiles->cookies(), IsEmpty());
}

/// Where the server opens sessions, and the keyring keeps those.
class KeyringSessionTest : public KeyringLoginTest
{
protected:
    /// The answer comes when the server is told to release it.
    void beginCheckThatBrings(const QString& value)
    {
        const QString name = client->jaSession()->sessionName().value_or(QString());
        const QJsonObject answer{{u"session"_s, QJsonObject{{u"name"_s, name}, {u"value"_s, value}}}};
        server.misbehave(Match::next(),
                         Fault()
                             .status(200, QJsonDocument(answer).toJson().toStdString(), "application/json")
                             .hold(Point::responseHead(0)));
        events.clear();
        client->updateSession(loginCallBack());
        ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    }
    void endCheck()
    {
        server.release();
        ASSERT_TRUE(waitForEvents(2));
        EXPECT_THAT(events, ElementsAre("valid", "session, no error")) << text().toStdString();
    }
};

INSTANTIATE_TEST_SUITE_P(By, KeyringSessionTest, testing::Values(tests::signInWays().front()),
                         testing::PrintToStringParamName());

TEST_P(KeyringSessionTest, givesWayToTheOneThatACheckBrings)
{
    startKeyring();
    logIn();
    beginCheckThatBrings(u"another"_s);
    endCheck();
    EXPECT_EQ(DesktopKeyring::secretOf(application), QByteArray("another"));
}

TEST_P(KeyringSessionTest, isNotWrittenAgainWhereACheckBringsTheSame)
{
    startKeyring();
    logIn();
    beginCheckThatBrings(client->jaSession()->sessionValue().value_or(QString()));
    // Whoever wanted to write now would be refused.
    ASSERT_TRUE(keyring.lock());
    endCheck();
}

TEST_P(KeyringSessionTest, staysAsItWasAfterAnAnswerThatOpensNone)
{
    startKeyring();
    logIn();
    const QByteArray secret = DesktopKeyring::secretOf(application);
    const QJsonObject inMemory = records::secretsInMemory();
    for (const char* answer :
         {"{}", R"({"session":{"name":"JSESSIONID"}})", R"({"session":{"value":"half of one"}})"}) {
        server.misbehave(Match::next(), Fault().status(200, answer, "application/json"));
        tryToLogIn();
        ASSERT_TRUE(waitForEvents(2));
        // Behind whatever the login may have asked of the keyring.
        check();
        EXPECT_THAT(events, ElementsAre("valid", "session, no error")) << text().toStdString();
        EXPECT_EQ(DesktopKeyring::secretOf(application), secret) << answer;
        EXPECT_EQ(records::secretsInMemory(), inMemory) << answer;
        EXPECT_EQ(onDisk(), withLogin()) << answer;
    }
}

TEST_P(KeyringSessionTest, isGoneHereThoughTheServerDoesNotEndIt)
{
    startKeyring();
    logIn();
    server.misbehave(Match::next(), Fault().status(500, "").hold(Point::responseHead(0)));
    client->logout(completionCallBack());
    // The keyring answers first.
    ASSERT_TRUE(
        tests::waitUntil([] { return !records::savedLogin().objectForKey(records::savedInKeyringKey).has_value(); }));
    EXPECT_THAT(events, IsEmpty());
    server.release();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("invalid", "invalid sessioin 500"));
    EXPECT_FALSE(DesktopKeyring::hasTextOf(application));
}

} // namespace
