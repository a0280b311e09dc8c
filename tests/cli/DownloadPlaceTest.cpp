#include "cli/DownloadPlace.h"

#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"
#include "tests/kit/WithoutPrivileges.h"

#include <QDir>
#include <QFile>
#include <QStorageInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

using namespace Qt::StringLiterals;
using cli::downloadDestination;
using cli::DownloadPlace;

class DownloadPlaceTest : public testing::Test
{
protected:
    QString path(const QString& name) const { return folder.filePath(name); }
    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray read(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }
    static QStringList itemsOf(const QString& folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    /// The outcome once it is there.
    static std::optional<tljira::Error> settled(DownloadPlace& place)
    {
        std::optional<std::optional<tljira::Error>> outcome;
        place.settle([&](const auto& error) { outcome = error; });
        EXPECT_FALSE(outcome);
        EXPECT_TRUE(tests::waitUntil([&] { return outcome.has_value(); }));
        return outcome.value_or(std::nullopt);
    }

    QTemporaryDir folder;
};

TEST_F(DownloadPlaceTest, isTheCurrentFolderUnlessToldOtherwise)
{
    QDir::setCurrent(folder.path());
    EXPECT_EQ(downloadDestination(std::nullopt, u"a b.tessaloom"_s), QDir::currentPath() + u"/a b.tessaloom"_s);
    EXPECT_EQ(downloadDestination(u"x/y"_s, u"a"_s), QDir::currentPath() + u"/x/y"_s);
}

TEST_F(DownloadPlaceTest, isInAFolderUnderTheAttachmentsName)
{
    QDir::setCurrent(folder.path());
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"sub"_s));
    EXPECT_EQ(downloadDestination(u"sub"_s, u"a"_s), QDir::currentPath() + u"/sub/a"_s);
    EXPECT_EQ(downloadDestination(u"."_s, u"a"_s), QDir::currentPath() + u"/a"_s);
    EXPECT_EQ(downloadDestination(u"missing/"_s, u"a"_s), QDir::currentPath() + u"/missing/a"_s);
}

TEST_F(DownloadPlaceTest, neverLeavesTheFolderForAName)
{
    QDir::setCurrent(folder.path());
    for (const auto& [name, safe] :
         std::vector<std::pair<QString, QString>>{{u"../../etc/passwd"_s, u".._.._etc_passwd"_s},
                                                  {u"/etc/passwd"_s, u"_etc_passwd"_s},
                                                  {u".."_s, u"_"_s},
                                                  {u""_s, u"_"_s},
                                                  {u"a\nb"_s, u"a_b"_s}})
        EXPECT_EQ(downloadDestination(std::nullopt, name), QDir::currentPath() + u'/' + safe);
}

TEST_F(DownloadPlaceTest, appearsCompleteAndLeavesNothingElse)
{
    {
        DownloadPlace place(path(u"plan"_s));
        ASSERT_EQ(place.prepare(), std::nullopt);
        write(place.receivingPath(), "bytes");
        EXPECT_EQ(settled(place), std::nullopt);
    }
    EXPECT_EQ(read(path(u"plan"_s)), "bytes");
    EXPECT_EQ(itemsOf(folder.path()), QStringList{u"plan"_s});
}

class NamesOfDownloads : public DownloadPlaceTest, public testing::WithParamInterface<QString>
{
};

TEST_P(NamesOfDownloads, haveThePermissionsOfOrdinaryFiles)
{
    const mode_t before = ::umask(027);
    DownloadPlace place(path(GetParam()));
    ASSERT_EQ(place.prepare(), std::nullopt);
    write(place.receivingPath(), "bytes");
    ASSERT_TRUE(QFile::setPermissions(place.receivingPath(), QFile::ReadOwner | QFile::WriteOwner));
    EXPECT_EQ(settled(place), std::nullopt);
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(path(GetParam())).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
    ::umask(before);
}

INSTANTIATE_TEST_SUITE_P(All, NamesOfDownloads, testing::Values(u"plan"_s, u"new"_s, QString(255, u'n')),
                         [](const auto& tested) { return tested.param.left(4).toStdString(); });

TEST_F(DownloadPlaceTest, crossesFileSystems)
{
    if (QStorageInfo(u"/dev/shm"_s).device() == QStorageInfo(folder.path()).device() || !QDir(u"/dev/shm"_s).exists())
        GTEST_SKIP() << "there is no second file system";
    const QTemporaryDir other(u"/dev/shm/tests-XXXXXX"_s);
    {
        DownloadPlace place(other.filePath(u"plan"_s));
        ASSERT_EQ(place.prepare(), std::nullopt);
        write(place.receivingPath(), QByteArray(3'000'000, 'x'));
        EXPECT_EQ(settled(place), std::nullopt);
    }
    EXPECT_EQ(read(other.filePath(u"plan"_s)), QByteArray(3'000'000, 'x'));
    EXPECT_EQ(itemsOf(other.path()), QStringList{u"plan"_s});
}

TEST_F(DownloadPlaceTest, findsWhatIsThereBeforehand)
{
    write(path(u"plan"_s), "mine");
    const auto error = DownloadPlace(path(u"plan"_s)).prepare();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, 516);
    EXPECT_EQ(error->localizedDescription(),
              u"“plan” couldn’t be saved in “%1” because an item with the same name already exists."_s.arg(
                  QDir(folder.path()).dirName()));
}

TEST_F(DownloadPlaceTest, countsALinkToNowhereAsThere)
{
    ASSERT_TRUE(QFile::link(u"nowhere"_s, path(u"plan"_s)));
    EXPECT_EQ(DownloadPlace(path(u"plan"_s)).prepare()->code, 516);
}

TEST_F(DownloadPlaceTest, neverReplacesWhatCameMeanwhile)
{
    {
        DownloadPlace place(path(u"plan"_s));
        ASSERT_EQ(place.prepare(), std::nullopt);
        write(place.receivingPath(), "bytes");
        write(path(u"plan"_s), "mine");
        const auto error = settled(place);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->code, 516);
    }
    EXPECT_EQ(read(path(u"plan"_s)), "mine");
    EXPECT_EQ(itemsOf(folder.path()), QStringList{u"plan"_s});
}

TEST_F(DownloadPlaceTest, saysSoWhenNothingWasReceived)
{
    DownloadPlace place(path(u"plan"_s));
    ASSERT_EQ(place.prepare(), std::nullopt);
    EXPECT_EQ(settled(place)->code, 4);
}

TEST_F(DownloadPlaceTest, findsAFolderThatTakesNothingBeforehand)
{
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    const tests::WithoutPrivileges ordinary;
    const auto error = DownloadPlace(path(u"plan"_s)).prepare();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, 513);
}

TEST_F(DownloadPlaceTest, saysWhyAFolderCannotBeLookedAt)
{
    ASSERT_TRUE(QFile::link(path(u"loop"_s), path(u"loop"_s)));
    DownloadPlace place(path(u"loop/plan"_s));
    const auto error = place.prepare();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->localizedDescription(),
              u"“plan” couldn’t be saved in “loop” because the folder cannot be looked at: "
              u"Too many levels of symbolic links."_s);
}

} // namespace
