#include "download/DownloadFolder.h"

#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/TemporaryDirectory.h"
#include "tests/download/DownloadTest.h"
#include "tests/kit/HeldGlobalQueue.h"
#include "tests/kit/WithoutPrivileges.h"

#include <QDir>
#include <QFileInfo>

namespace {

using testing::ElementsAre;
using tests::contentsOf;
using tests::writeFile;

class DownloadFolderTest : public testing::Test
{
protected:
    void makeAnew() { DownloadFolder::makeAnew(path); }

    QString inFolder(const char* name) const { return path + u'/' + QString::fromUtf8(name); }

    /// The names of those files below the temporary directory that this process has open, removed ones included.
    static QStringList openFiles()
    {
        QStringList names;
        const QString folder = tljira::temporaryDirectory() + u'/';
        for (const QFileInfo& descriptor :
             QDir(QStringLiteral("/proc/self/fd")).entryInfoList(QDir::System | QDir::Files)) {
            const QString target = descriptor.symLinkTarget();
            if (target.startsWith(folder))
                names.append(target.section(u'/', -1));
        }
        return names;
    }

    tests::LogCapture log;
    const QString path = DownloadFolder::path();
};

TEST_F(DownloadFolderTest, liesInTheTemporaryDirectory)
{
    EXPECT_EQ(path, tljira::temporaryDirectory() + QStringLiteral("/com.tessalooom.JAController"));
}

TEST_F(DownloadFolderTest, isMadeWhereThereIsNone)
{
    makeAnew();
    EXPECT_TRUE(QFileInfo(path).isDir());
    EXPECT_THAT(
        log.lines(),
        ElementsAre(QStringLiteral("tmp directory: ") + path,
                    QStringLiteral("removeItemAtPath error : “com.tessalooom.JAController” couldn’t be removed."),
                    QStringLiteral("createDirectoryAtPath error : (null)")));
}

TEST_F(DownloadFolderTest, isMadeWithTheFoldersThatItLiesIn)
{
    DownloadFolder::makeAnew(inFolder("deep/er"));
    EXPECT_TRUE(QFileInfo(inFolder("deep/er")).isDir());
}

TEST_F(DownloadFolderTest, losesEverythingItHeld)
{
    QDir().mkpath(inFolder("deep/er"));
    writeFile(inFolder("old.tessaloom"), "old");
    writeFile(inFolder("deep/er/older"), "older");
    makeAnew();
    EXPECT_TRUE(QFileInfo(path).isDir());
    EXPECT_TRUE(QDir(path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));
    EXPECT_THAT(log.lines(),
                ElementsAre(QStringLiteral("tmp directory: ") + path, QStringLiteral("removeItemAtPath error : (null)"),
                            QStringLiteral("createDirectoryAtPath error : (null)")));
}

TEST_F(DownloadFolderTest, takesThePlaceOfAFile)
{
    writeFile(path, "a file");
    makeAnew();
    EXPECT_TRUE(QFileInfo(path).isDir());
}

TEST_F(DownloadFolderTest, takesThePlaceOfALinkAndLeavesWhatItPointsTo)
{
    const QString elsewhere = tljira::temporaryDirectory() + QStringLiteral("/elsewhere");
    QDir().mkpath(elsewhere);
    writeFile(elsewhere + QStringLiteral("/precious"), "precious");
    ASSERT_TRUE(QFile::link(elsewhere, path));
    makeAnew();
    EXPECT_TRUE(QFileInfo(path).isDir());
    EXPECT_FALSE(QFileInfo(path).isSymLink());
    EXPECT_EQ(contentsOf(elsewhere + QStringLiteral("/precious")), QByteArray("precious"));
}

TEST_F(DownloadFolderTest, removesLinksInsideAndLeavesWhatTheyPointTo)
{
    const QString elsewhere = tljira::temporaryDirectory() + QStringLiteral("/elsewhere");
    QDir().mkpath(elsewhere);
    writeFile(elsewhere + QStringLiteral("/precious"), "precious");
    QDir().mkpath(path);
    ASSERT_TRUE(QFile::link(elsewhere, inFolder("link")));
    makeAnew();
    EXPECT_FALSE(tljira::FileManager::fileExistsAtPath(inFolder("link")));
    EXPECT_EQ(contentsOf(elsewhere + QStringLiteral("/precious")), QByteArray("precious"));
}

/// A large file takes its time for that, in which nobody waits.
TEST_F(DownloadFolderTest, givesTheBytesOfItsFilesBackOnAnotherThread)
{
    const QString elsewhere = tljira::temporaryDirectory() + QStringLiteral("/precious");
    writeFile(elsewhere, "precious");
    QDir().mkpath(inFolder("deep"));
    writeFile(inFolder("large"), "large");
    ASSERT_TRUE(QFile::link(elsewhere, inFolder("deep/link")));
    tests::HeldGlobalQueue slowDisk;
    makeAnew();
    EXPECT_TRUE(QDir(path).isEmpty());
    EXPECT_THAT(openFiles(), ElementsAre(QStringLiteral("large (deleted)")));
    slowDisk.letGo();
    EXPECT_TRUE(tests::waitUntil([] { return openFiles().isEmpty(); }));
}

TEST_F(DownloadFolderTest, saysWhenItCannotBeEmptied)
{
    QDir().mkpath(inFolder("locked"));
    writeFile(inFolder("locked/kept"), "kept");
    QFile::setPermissions(inFolder("locked"), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    {
        const tests::WithoutPrivileges asAnyUser;
        makeAnew();
    }
    QFile::setPermissions(inFolder("locked"), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    EXPECT_EQ(contentsOf(inFolder("locked/kept")), QByteArray("kept"));
    ASSERT_EQ(log.lines().size(), 3);
    EXPECT_NE(log.lines()[1], QStringLiteral("removeItemAtPath error : (null)"));
    EXPECT_THAT(log.lines()[1].toStdString(), testing::HasSubstr("permission"));
    EXPECT_EQ(log.lines()[2], QStringLiteral("createDirectoryAtPath error : (null)"));
}

} // namespace
