#include "platform/foundation/loading/HTTPCookieStorage.h"

#include "platform/foundation/os/FileLock.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"
#include "tests/platform/foundation/FailingSync.h"
#include "tests/platform/foundation/RoomFor.h"

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

    /// Until the file has it.
    static void set(HTTPCookieStorage& storage, const HTTPCookie& cookie)
    {
        storage.setCookie(cookie);
        EXPECT_EQ(storage.synchronize(), std::nullopt);
    }

    static void empty(HTTPCookieStorage& storage)
    {
        storage.deleteAllCookies();
        EXPECT_EQ(storage.synchronize(), std::nullopt);
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

TEST_F(HTTPCookieStorageTest, isEmptyAtFirstAndWritesNothing)
{
    const HTTPCookieStorage storage(path);
    EXPECT_THAT(storage.cookies(), IsEmpty());
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(HTTPCookieStorageTest, keepsCookiesWithAnExpiryForTheNextProcess)
{
    {
        HTTPCookieStorage storage(path);
        set(storage, cookie("lasting", "1"));
        set(storage, cookie("fleeting", "2", 0));
        EXPECT_THAT(pairs(storage), UnorderedElementsAre("lasting=1", "fleeting=2"));
    }
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("lasting=1"));
    EXPECT_FALSE(bytes().contains("fleeting"));
}

TEST_F(HTTPCookieStorageTest, replacesACookieOfTheSameDomainPathAndName)
{
    HTTPCookieStorage storage(path);
    set(storage, cookie("name", "old"));
    set(storage, cookie("name", "new"));
    EXPECT_THAT(pairs(storage), ElementsAre("name=new"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("name=new"));
}

TEST_F(HTTPCookieStorageTest, dropsACookieThatHasExpired)
{
    HTTPCookieStorage storage(path);
    set(storage, cookie("name", "value"));
    set(storage, cookie("name", "value", 1));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), IsEmpty());
}

TEST_F(HTTPCookieStorageTest, emptiesJarAndFile)
{
    HTTPCookieStorage storage(path);
    set(storage, cookie("lasting", "1"));
    set(storage, cookie("fleeting", "2", 0));
    empty(storage);
    EXPECT_THAT(pairs(storage), IsEmpty());
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), IsEmpty());
}

TEST_F(HTTPCookieStorageTest, canBeFilledAgainAfterItWasEmptied)
{
    HTTPCookieStorage storage(path);
    set(storage, cookie("name", "1"));
    empty(storage);
    set(storage, cookie("name", "1"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("name=1"));
}

TEST_F(HTTPCookieStorageTest, leavesTheCookiesThatAnotherProcessWrote)
{
    HTTPCookieStorage mine(path);
    HTTPCookieStorage theirs(path);
    set(theirs, cookie("theirs", "1"));
    set(mine, cookie("mine", "2"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), UnorderedElementsAre("theirs=1", "mine=2"));
}

TEST_F(HTTPCookieStorageTest, takesOnlyItsOwnCookiesOutOfTheSharedFile)
{
    HTTPCookieStorage mine(path);
    set(mine, cookie("mine", "1"));
    HTTPCookieStorage theirs(path);
    set(theirs, cookie("theirs", "2"));
    set(mine, cookie("mine", "1", 1));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("theirs=2"));
}

TEST_F(HTTPCookieStorageTest, leavesTheCookieThatAnotherProcessHasRenewedWhenItsOwnRunsOut)
{
    const qint64 soon = QDateTime::currentSecsSinceEpoch() + 2;
    HTTPCookieStorage mine(path);
    set(mine, cookie("name", "old", soon));
    HTTPCookieStorage theirs(path);
    set(theirs, cookie("name", "renewed"));
    ASSERT_TRUE(tests::waitUntil([soon] { return QDateTime::currentSecsSinceEpoch() > soon; }));
    set(mine, cookie("other", "1"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), UnorderedElementsAre("name=renewed", "other=1"));
}

TEST_F(HTTPCookieStorageTest, isPrivate)
{
    HTTPCookieStorage storage(path);
    set(storage, cookie("name", "value"));
    const auto others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    EXPECT_FALSE(QFile::permissions(path) & others);
    EXPECT_FALSE(QFile::permissions(QFileInfo(path).path()) & others);
}

TEST_F(HTTPCookieStorageTest, keepsADamagedFileAsideAndStartsEmpty)
{
    damage();

    const tests::LogCapture log;
    HTTPCookieStorage storage(path);
    EXPECT_THAT(storage.cookies(), IsEmpty());
    EXPECT_EQ(storage.synchronize(), std::nullopt);
    EXPECT_EQ(log.lines().size(), 1);
    EXPECT_FALSE(bytes().contains("no cookies"));
    EXPECT_EQ(bytesSetAside(), QByteArray("no cookies at all\n"));

    set(storage, cookie("name", "value"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("name=value"));
}

TEST_F(HTTPCookieStorageTest, keepsAFileAsideThatIsDamagedMeanwhileAndSavesWhatItHas)
{
    HTTPCookieStorage storage(path);
    set(storage, cookie("first", "1"));
    damage();
    set(storage, cookie("second", "2"));
    EXPECT_EQ(bytesSetAside(), QByteArray("no cookies at all\n"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), UnorderedElementsAre("first=1", "second=2"));
}

TEST_F(HTTPCookieStorageTest, bringsNothingBackThatAnotherProcessDeleted)
{
    HTTPCookieStorage mine(path);
    set(mine, cookie("old", "1"));
    HTTPCookieStorage theirs(path);
    empty(mine);
    set(theirs, cookie("new", "2"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("new=2"));
}

TEST_F(HTTPCookieStorageTest, emptiesTheFileLaterWhenTheDiskRefusedAtFirst)
{
    HTTPCookieStorage theirs(path);
    HTTPCookieStorage mine(path);
    set(theirs, cookie("theirs", "1"));
    set(mine, cookie("mine", "2"));
    const tests::LogCapture log;
    {
        const tests::FailingSync failing(1);
        mine.deleteAllCookies();
        ASSERT_TRUE(tests::waitUntil([&] { return !log.lines().isEmpty(); }));
        EXPECT_EQ(log.lines().first(), path + QStringLiteral(" could not be written: Input/output error"));
    }
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), UnorderedElementsAre("theirs=1", "mine=2"));

    set(mine, cookie("new", "3"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("new=3"));
}

TEST_F(HTTPCookieStorageTest, saysWhyTheFileIsNotUpToDate)
{
    const tests::LogCapture log;
    HTTPCookieStorage storage(path);
    set(storage, cookie("name", "1"));
    tljira::os::FileLock others;
    ASSERT_FALSE(others.lockExisting((path + QStringLiteral(".lock")).toStdString()));
    storage.setCookie(cookie("name", "2"));
    EXPECT_THAT(pairs(storage), ElementsAre("name=2"));
    const auto error = storage.synchronize();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->localizedDescription(), QStringLiteral("another process keeps it locked"));
    storage.deleteAllCookies();
    EXPECT_THAT(pairs(storage), IsEmpty());
    EXPECT_TRUE(storage.synchronize());
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("name=1"));
    others.unlock();
    EXPECT_EQ(storage.synchronize(), std::nullopt);
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), IsEmpty());
}

TEST_F(HTTPCookieStorageTest, aFullDiskLeavesTheOldCookiesHoweverMuchRoomThereIs)
{
    const tests::LogCapture log;
    HTTPCookieStorage storage(path);
    set(storage, cookie("a", "1"));
    const QByteArray before = bytes();
    {
        const tests::RoomFor disk(0);
        storage.setCookie(cookie("b", "2"));
        ASSERT_TRUE(storage.synchronize());
        ASSERT_EQ(bytes(), before);
    }
    int room = 1;
    for (bool isWritten = false; !isWritten; ++room) {
        const tests::RoomFor disk(static_cast<rlim_t>(room));
        isWritten = !storage.synchronize();
        ASSERT_TRUE(isWritten || bytes() == before) << room;
    }
    EXPECT_EQ(bytes().size() + 1, room);
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), UnorderedElementsAre("a=1", "b=2"));
}

TEST_F(HTTPCookieStorageTest, isWrittenWhenItEnds)
{
    HTTPCookieStorage(path).setCookie(cookie("name", "value"));
    EXPECT_THAT(pairs(HTTPCookieStorage(path)), ElementsAre("name=value"));
}

TEST_F(HTTPCookieStorageTest, ofTheProcessLiesInTheDataFolder)
{
    const auto& storage = HTTPCookieStorage::sharedHTTPCookieStorage();
    EXPECT_EQ(storage, HTTPCookieStorage::sharedHTTPCookieStorage());
    set(*storage, cookie("name", "value"));
    EXPECT_TRUE(QFile::exists(qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/tests/cookies.txt")));
}

TEST_F(HTTPCookieStorageTest, aFileThatCannotBeLookedAtIsNotTakenForEmptied)
{
    const tests::LogCapture log;
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    // It leads to itself.
    ASSERT_TRUE(QFile::link(path, path));
    HTTPCookieStorage storage(path);
    storage.deleteAllCookies();
    const auto error = storage.synchronize();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->localizedDescription(), QStringLiteral("its present content cannot be read"));
}

TEST_F(HTTPCookieStorageTest, withoutAPathHasNoFile)
{
    const QTemporaryDir here;
    ASSERT_TRUE(QDir::setCurrent(here.path()));
    HTTPCookieStorage jar{QString()};
    jar.setCookie(cookie("kept", "long"));
    EXPECT_EQ(jar.synchronize(), std::nullopt);
    EXPECT_THAT(jar.cookies(), ElementsAre(cookie("kept", "long")));
    jar.deleteAllCookies();
    EXPECT_EQ(jar.synchronize(), std::nullopt);
    EXPECT_THAT(jar.cookies(), IsEmpty());
    EXPECT_THAT(QDir(here.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), IsEmpty());
}

} // namespace
