#include "platform/foundation/files/TemporaryDirectory.h"

#include "tests/kit/Printers.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using tljira::temporaryDirectory;

mode_t modeOf(const QString& path)
{
    struct stat status = {};
    EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &status), 0);
    return status.st_mode;
}

QString expectedPath()
{
    return QDir::tempPath() + QStringLiteral("/TLJiraController-%1").arg(geteuid());
}

void expectPrivateFolder(const QString& path)
{
    EXPECT_EQ(modeOf(path), S_IFDIR | 0700u);
}

TEST(TemporaryDirectory, liesInTMPDIRAndIsTheUsersAlone)
{
    EXPECT_EQ(QDir::tempPath(), QString::fromUtf8(qgetenv("TMPDIR")));
    EXPECT_EQ(temporaryDirectory(), expectedPath());
    expectPrivateFolder(expectedPath());
}

TEST(TemporaryDirectory, liesInTheSystemsFolderWhereTMPDIRIsNotThere)
{
    qputenv("TMPDIR", "/nonexistent");
    EXPECT_EQ(temporaryDirectory(), QStringLiteral("/tmp/TLJiraController-%1").arg(geteuid()));
}

TEST(TemporaryDirectory, staysTheSameAndIsMadeAgainWhenRemoved)
{
    const QString path = temporaryDirectory();
    EXPECT_EQ(temporaryDirectory(), path);
    ASSERT_TRUE(QDir().rmdir(path));
    EXPECT_EQ(temporaryDirectory(), path);
    expectPrivateFolder(path);
}

TEST(TemporaryDirectory, isPrivateUnderEveryUmask)
{
    const mode_t before = umask(0);
    expectPrivateFolder(temporaryDirectory());
    ASSERT_TRUE(QDir().rmdir(temporaryDirectory()));
    umask(0077);
    expectPrivateFolder(temporaryDirectory());
    umask(before);
}

TEST(TemporaryDirectory, closesAFolderThatOthersCanEnter)
{
    ASSERT_EQ(mkdir(QFile::encodeName(expectedPath()).constData(), 0700), 0);
    ASSERT_EQ(chmod(QFile::encodeName(expectedPath()).constData(), 0777), 0);
    EXPECT_EQ(temporaryDirectory(), expectedPath());
    expectPrivateFolder(expectedPath());
}

/// The name is taken: the process gets another folder, the same at each call.
void expectFreshFolder()
{
    const QString fresh = temporaryDirectory();
    EXPECT_NE(fresh, expectedPath());
    EXPECT_TRUE(fresh.startsWith(QDir::tempPath() + u'/')) << fresh.toStdString();
    expectPrivateFolder(fresh);
    EXPECT_EQ(temporaryDirectory(), fresh);
}

TEST(TemporaryDirectory, neverFollowsALink)
{
    const QTemporaryDir elsewhere;
    ASSERT_TRUE(QFile::link(elsewhere.path(), expectedPath()));
    const mode_t before = modeOf(elsewhere.path());
    expectFreshFolder();
    EXPECT_EQ(modeOf(elsewhere.path()), before);
    EXPECT_TRUE(QDir(elsewhere.path()).isEmpty());
}

TEST(TemporaryDirectory, leavesAFileOnTheNameAlone)
{
    QFile file(expectedPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    expectFreshFolder();
    EXPECT_TRUE(QFileInfo(expectedPath()).isFile());
}

TEST(TemporaryDirectory, doesNotTrustAFolderOfSomebodyElse)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a folder away";
    ASSERT_TRUE(QDir().mkdir(expectedPath()));
    ASSERT_EQ(chown(QFile::encodeName(expectedPath()).constData(), 12345, 12345), 0);
    expectFreshFolder();
}

TEST(TemporaryDirectory, aFreshFolderThatWasRemovedIsReplaced)
{
    QFile file(expectedPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString first = temporaryDirectory();
    ASSERT_TRUE(QDir().rmdir(first));
    expectPrivateFolder(temporaryDirectory());
}

TEST(TemporaryDirectory, isNotTheCurrentFolderWhereNoneCanBeMade)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("file"));
    ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    qputenv("TMPDIR", QFile::encodeName(file));
    EXPECT_TRUE(temporaryDirectory().startsWith(QDir::tempPath() + u'/')) << temporaryDirectory().toStdString();
    EXPECT_FALSE(QFileInfo::exists(temporaryDirectory()));
}

} // namespace
