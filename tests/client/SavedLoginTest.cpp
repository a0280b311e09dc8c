#include "records/SavedLogin.h"

#include "constants/JAConstants.h"
#include "records/SavedToken.h"
#include "tests/client/ClientTest.h"

#include <QFile>
#include <QJsonDocument>
#include <QStandardPaths>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;

const QString here = QStringLiteral("http://jira.example.test");
const QString elsewhere = QStringLiteral("http://other.example.test");

/// What a next run would find.
class SavedLoginTest : public tests::ClientTest
{
protected:
    static QString path()
    {
        return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
               QStringLiteral("/userdefaults.json");
    }

    static QJsonObject onDisk()
    {
        EXPECT_TRUE(records::savedLogin().synchronize());
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
    }

    static QJsonObject login(const QString& address, const QString& value)
    {
        return {{QStringLiteral("jiraUrl"), address},
                {QStringLiteral("kSessionName"), QStringLiteral("JSESSIONID")},
                {QStringLiteral("kSessionValue"), value}};
    }

    void logInAt(const QString& address)
    {
        client->setHost(address);
        logIn();
    }

    static QString savedValue()
    {
        return records::savedLogin().stringForKey(QStringLiteral("kSessionValue")).value_or(QString());
    }
};

TEST_F(SavedLoginTest, isOneOfAddressNameAndValue)
{
    logInAt(here);
    EXPECT_EQ(onDisk(), login(here, savedValue()));
}

TEST_F(SavedLoginTest, isJustThisInTheFileOfAHostThatChoseNothing)
{
    logInAt(here);
    EXPECT_TRUE(records::savedLogin().synchronize());
    const QString line = QStringLiteral(R"({"jiraUrl":"%1","kSessionName":"JSESSIONID","kSessionValue":"%2"})");
    EXPECT_EQ(tests::contentsOf(path()), line.arg(here, savedValue()).toUtf8());
    client->logout({});
    EXPECT_TRUE(waitForEvents(1));
    EXPECT_TRUE(records::savedLogin().synchronize());
    const QString left = QStringLiteral(R"({"kSessionName":"JSESSIONID","kSessionValue":"%1"})");
    EXPECT_EQ(tests::contentsOf(path()), left.arg(savedValue()).toUtf8());
}

TEST_F(SavedLoginTest, neverHasTheAddressOfOneServerAndTheSessionOfAnother)
{
    logInAt(here);
    const QString atFirst = savedValue();
    client->setHost(elsewhere);
    EXPECT_EQ(onDisk(), (QJsonObject{{QStringLiteral("jiraUrl"), elsewhere}}));
    // This process goes on with it.
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("JSESSIONID=") + atFirst);
    logIn();
    EXPECT_NE(savedValue(), atFirst);
    EXPECT_EQ(onDisk(), login(elsewhere, savedValue()));
}

TEST_F(SavedLoginTest, comesBackWithItsAddress)
{
    logInAt(here);
    client->setHost(elsewhere);
    ASSERT_FALSE(onDisk().contains(QStringLiteral("kSessionValue")));
    client->setHost(here + u'/');
    EXPECT_EQ(onDisk(), login(here + u'/', savedValue()));
}

TEST_F(SavedLoginTest, ofAServerThatAnsweredAfterAnotherWasTypedIsNotSavedWithThat)
{
    client->setHost(here);
    server.misbehave(Match::next(), Fault().hold(Point::responseHead(0)));
    client->login(QStringLiteral("anna"), QStringLiteral("secret"), loginCallBack());
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    client->setHost(elsewhere);
    server.release();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(JALoginObject::restoreSession(), QStringLiteral("JSESSIONID=") + savedValue());
    EXPECT_EQ(onDisk(), (QJsonObject{{QStringLiteral("jiraUrl"), elsewhere}}));
}

TEST_F(SavedLoginTest, isNotGivenToAServerThatOpensHalfASession)
{
    for (const char* half : {R"({"session":{"name":"JSESSIONID"}})", R"({"session":{"value":"ABCDEF"}})"}) {
        logInAt(here);
        const QString ofHere = savedValue();
        client->setHost(elsewhere);
        server.misbehave(Match::next(), Fault().status(200, half, "application/json"));
        events.clear();
        client->login(QStringLiteral("anna"), QStringLiteral("secret"), loginCallBack());
        ASSERT_TRUE(waitForEvents(2));
        EXPECT_EQ(onDisk(), (QJsonObject{{QStringLiteral("jiraUrl"), elsewhere}})) << half;
        client->setHost(here);
        EXPECT_EQ(onDisk(), login(here, ofHere)) << half;
    }
}

TEST_F(SavedLoginTest, staysWithoutItsAddressAfterALogout)
{
    logInAt(here);
    client->logout(nullptr);
    QJsonObject expected = login(here, savedValue());
    expected.remove(kJiraURL);
    EXPECT_EQ(onDisk(), expected);
}

TEST_F(SavedLoginTest, isOfTheAddressUnderWhichItIsSavedAgain)
{
    const QJsonObject answer{{QStringLiteral("name"), QStringLiteral("JSESSIONID")},
                             {QStringLiteral("value"), QStringLiteral("same")}};
    const auto opened = JALoginObject::initWithDictionary(QJsonObject{{QStringLiteral("session"), answer}});
    opened->saveSession();
    ASSERT_EQ(onDisk().value(QStringLiteral("kSessionValue")), QStringLiteral("same"));
    {
        const tljira::UserDefaults::Hold inOnePiece(records::savedLogin());
        client->setHost(here);
        opened->saveSession();
    }
    EXPECT_EQ(onDisk(), login(here, QStringLiteral("same")));
}

TEST_F(SavedLoginTest, byATokenIsOfTheAddressUnderWhichItIsSavedAgain)
{
    const records::SavedToken token{here, QStringLiteral("anna"), QStringLiteral("same")};
    records::saveToken(token);
    ASSERT_TRUE(onDisk().contains(records::savedTokenKey));
    {
        const tljira::UserDefaults::Hold inOnePiece(records::savedLogin());
        client->setHost(here);
        records::saveToken(token);
    }
    EXPECT_EQ(onDisk().value(kJiraURL), here);
    EXPECT_TRUE(onDisk().contains(records::savedTokenKey));
}

TEST_F(SavedLoginTest, ofAnotherProcessIsTakenUpOnlyForTheSameServer)
{
    logInAt(here);
    ASSERT_TRUE(records::savedLogin().synchronize());
    tljira::UserDefaults theirs(path());
    theirs.keepTogether(kJiraURL, {records::savedNameKey, records::savedValueKey}, records::isSameServer);
    theirs.setObject(QStringLiteral("newer"), records::savedValueKey);
    ASSERT_TRUE(theirs.synchronize());
    ASSERT_TRUE(records::savedLogin().synchronize());
    EXPECT_EQ(savedValue(), QStringLiteral("newer"));
    {
        const tljira::UserDefaults::Hold inOnePiece(theirs);
        theirs.setObject(elsewhere, kJiraURL);
        theirs.setObject(QStringLiteral("elsewhere"), records::savedValueKey);
    }
    ASSERT_TRUE(theirs.synchronize());
    EXPECT_EQ(onDisk(), login(elsewhere, QStringLiteral("elsewhere")));
    EXPECT_EQ(savedValue(), QStringLiteral("newer"));
    client->sendGetRequest(client->url(kLoginURLPath), requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(server.lastRequest().header("Cookie"), testing::HasSubstr("JSESSIONID=newer"));
    EXPECT_THAT(server.lastRequest().header("Cookie"), testing::Not(testing::HasSubstr("elsewhere")));
}

TEST_F(SavedLoginTest, ofAnUnchangedSessionIsNotWrittenAgain)
{
    client->setHost(here);
    saveSession("N", "V");
    const QByteArray before = *tests::contentsOf((onDisk(), path()));
    // Spaces that the program does not write show whether it has.
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(" " + before);
    }
    saveSession("N", "V");
    client->setHost(here);
    onDisk();
    EXPECT_EQ(tests::contentsOf(path()), " " + before);
    saveSession("N", "W");
    onDisk();
    EXPECT_FALSE(tests::contentsOf(path()).value_or(QByteArray()).startsWith(' '));
}

} // namespace
