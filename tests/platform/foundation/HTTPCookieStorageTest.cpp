#include "platform/foundation/HTTPCookieStorage.h"

#include "tests/support/LogCapture.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using tljira::HTTPCookie;
using tljira::HTTPCookieStorage;

constexpr qint64 farAway = 4102444800;

HTTPCookie cookie(const char* name, const char* value, qint64 expires = farAway)
{
    HTTPCookie made;
    made.domain = QStringLiteral("jira.example.test");
    made.path = QStringLiteral("/");
    made.name = QString::fromUtf8(name);
    made.value = QString::fromUtf8(value);
    made.expires = expires;
    return made;
}

class HTTPCookieStorageTest : public testing::Test
{
protected:
    QByteArray bytes() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QByteArray bytesSetAside() const
    {
        QFile file(path + QStringLiteral(".damaged-1"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void damage() const
    {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("no cookies at all\n");
    }

    static std::vector<std::string> pairs(const HTTPCookieStorage& storage)
    {
        std::vector<std::string> all;
        for (const HTTPCookie& one : storage.cookies())
            all.push_back((one.name + u'=' + one.value).toStdString());
        return all;
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("data/cookies.txt"));
};

TEST_F(HTTPCookieStorageTest, IsEmptyAtFirstAndWritesNothing)
{
    const HTTPCookieStorage storage(path);
    EXPECT_THAT(storage.cookies(), IsEmpty());
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(HTTPCookieStorageTest, KeepsCookiesWithAnExpiryForTheNextProcess)
{
    {
        HTTPCookieStorage storage(path);
        storage.setCookie(cookie("lasting", "1"));
        storage.setCookie(cookie("fleeting", "2", 0));
        EXPECT_THAT(pairs(storage), UnorderedElementsAre("lasting=1", "fleeting=2"));
    }
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("lasting=1"));
    EXPECT_FALSE(bytes().contains("fleeting"));
}

TEST_F(HTTPCookieStorageTest, ReplacesACookieOfTheSameDomainPathAndName)
{
    HTTPCookieStorage storage(path);
    storage.setCookie(cookie("name", "old"));
    storage.setCookie(cookie("name", "new"));
    EXPECT_THAT(pairs(storage), ElementsAre("name=new"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("name=new"));
}

TEST_F(HTTPCookieStorageTest, DropsACookieThatHasExpired)
{
    HTTPCookieStorage storage(path);
    storage.setCookie(cookie("name", "value"));
    storage.setCookie(cookie("name", "value", 1));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), IsEmpty());
}

TEST_F(HTTPCookieStorageTest, EmptiesJarAndFile)
{
    HTTPCookieStorage storage(path);
    storage.setCookie(cookie("lasting", "1"));
    storage.setCookie(cookie("fleeting", "2", 0));
    storage.deleteAllCookies();
    EXPECT_THAT(pairs(storage), IsEmpty());
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), IsEmpty());
}

TEST_F(HTTPCookieStorageTest, CanBeFilledAgainAfterItWasEmptied)
{
    HTTPCookieStorage storage(path);
    storage.setCookie(cookie("name", "1"));
    storage.deleteAllCookies();
    storage.setCookie(cookie("name", "1"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("name=1"));
}

TEST_F(HTTPCookieStorageTest, LeavesTheCookiesThatAnotherProcessWrote)
{
    HTTPCookieStorage mine(path);
    HTTPCookieStorage theirs(path);
    theirs.setCookie(cookie("theirs", "1"));
    mine.setCookie(cookie("mine", "2"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), UnorderedElementsAre("theirs=1", "mine=2"));
}

TEST_F(HTTPCookieStorageTest, TakesOnlyItsOwnCookiesOutOfTheSharedFile)
{
    HTTPCookieStorage mine(path);
    mine.setCookie(cookie("mine", "1"));
    HTTPCookieStorage theirs(path);
    theirs.setCookie(cookie("theirs", "2"));
    mine.setCookie(cookie("mine", "1", 1));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("theirs=2"));
}

TEST_F(HTTPCookieStorageTest, IsPrivate)
{
    HTTPCookieStorage storage(path);
    storage.setCookie(cookie("name", "value"));
    const auto others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(QFile::permissions(path) & others);
    EXPECT_FALSE(QFile::permissions(QFileInfo(path).path()) & others);
}

TEST_F(HTTPCookieStorageTest, KeepsADamagedFileAsideAndStartsEmpty)
{
    damage();

    const tests::LogCapture log;
    HTTPCookieStorage storage(path);
    EXPECT_THAT(storage.cookies(), IsEmpty());
    EXPECT_EQ(log.lines().size(), 1);
    EXPECT_FALSE(bytes().contains("no cookies"));
    EXPECT_EQ(bytesSetAside(), QByteArray("no cookies at all\n"));

    storage.setCookie(cookie("name", "value"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("name=value"));
}

TEST_F(HTTPCookieStorageTest, KeepsAFileAsideThatIsDamagedMeanwhileAndSavesWhatItHas)
{
    HTTPCookieStorage storage(path);
    storage.setCookie(cookie("first", "1"));
    damage();
    storage.setCookie(cookie("second", "2"));
    EXPECT_EQ(bytesSetAside(), QByteArray("no cookies at all\n"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), UnorderedElementsAre("first=1", "second=2"));
}

TEST_F(HTTPCookieStorageTest, BringsNothingBackThatAnotherProcessDeleted)
{
    HTTPCookieStorage mine(path);
    mine.setCookie(cookie("old", "1"));
    HTTPCookieStorage theirs(path);
    mine.deleteAllCookies();
    theirs.setCookie(cookie("new", "2"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("new=2"));
}

TEST_F(HTTPCookieStorageTest, EmptiesTheFileLaterWhenTheDiskRefusedAtFirst)
{
    HTTPCookieStorage theirs(path);
    HTTPCookieStorage mine(path);
    theirs.setCookie(cookie("theirs", "1"));
    mine.setCookie(cookie("mine", "2"));
    const QString lock = path + QStringLiteral(".lock");
    ASSERT_TRUE(QDir().mkdir(lock));
    mine.deleteAllCookies();
    ASSERT_TRUE(QDir().rmdir(lock));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), UnorderedElementsAre("theirs=1", "mine=2"));

    mine.setCookie(cookie("new", "3"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("new=3"));
}

TEST_F(HTTPCookieStorageTest, OfTheProcessLiesInTheDataFolder)
{
    const auto& storage = HTTPCookieStorage::sharedHTTPCookieStorage();
    EXPECT_EQ(storage, HTTPCookieStorage::sharedHTTPCookieStorage());
    storage->setCookie(cookie("name", "value"));
    EXPECT_TRUE(QFile::exists(qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/tests/cookies.txt")));
}

} // namespace
