#include "platform/foundation/files/FileManager.h"

#include "tests/kit/Printers.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace tljira;
using testing::UnorderedElementsAre;

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

void expectError(const std::optional<Error>& error, qint64 code, const QString& text)
{
    ASSERT_TRUE(error);
    EXPECT_EQ(error->domain, QStringLiteral("NSCocoaErrorDomain"));
    EXPECT_EQ(error->code, code);
    EXPECT_EQ(error->localizedDescription(), text);
}

class FileManagerTest : public testing::Test
{
protected:
    QString path(const char16_t* name) const { return m_folder.filePath(QString::fromUtf16(name)); }

    QString makeFile(const char16_t* name, const QByteArray& content = "content") const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return path(name);
    }

    QString makeFolder(const char16_t* name) const
    {
        EXPECT_TRUE(QDir().mkpath(path(name)));
        return path(name);
    }

    QStringList everythingIn(const char16_t* name) const
    {
        return QDir(path(name)).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_folder;
};

TEST_F(FileManagerTest, removesAFile)
{
    EXPECT_EQ(FileManager::removeItemAtPath(makeFile(u"x")), std::nullopt);
    EXPECT_FALSE(QFileInfo::exists(path(u"x")));
}

TEST_F(FileManagerTest, removesAFolderWithEverythingInIt)
{
    makeFolder(u"x/a/b");
    makeFile(u"x/a/b/file");
    makeFile(u"x/.hidden");
    EXPECT_EQ(FileManager::removeItemAtPath(path(u"x/")), std::nullopt);
    EXPECT_FALSE(QFileInfo::exists(path(u"x")));
}

TEST_F(FileManagerTest, removesOnlyTheLinkToAFolder)
{
    makeFolder(u"target");
    makeFile(u"target/file");
    ASSERT_TRUE(QFile::link(path(u"target"), path(u"link")));
    EXPECT_EQ(FileManager::removeItemAtPath(path(u"link")), std::nullopt);
    EXPECT_FALSE(QFileInfo(path(u"link")).isSymLink());
    EXPECT_EQ(contentOf(path(u"target/file")), "content");
}

TEST_F(FileManagerTest, doesNotFollowLinksInsideARemovedFolder)
{
    makeFolder(u"target");
    makeFile(u"target/file");
    makeFolder(u"x");
    ASSERT_TRUE(QFile::link(path(u"target"), path(u"x/link")));
    EXPECT_EQ(FileManager::removeItemAtPath(path(u"x")), std::nullopt);
    EXPECT_EQ(contentOf(path(u"target/file")), "content");
}

TEST_F(FileManagerTest, removesALinkThatPointsNowhere)
{
    ASSERT_TRUE(QFile::link(path(u"nowhere"), path(u"link")));
    EXPECT_EQ(FileManager::removeItemAtPath(path(u"link")), std::nullopt);
    EXPECT_FALSE(QFileInfo(path(u"link")).isSymLink());
}

TEST_F(FileManagerTest, removingWhatIsNotThereIsAnError)
{
    expectError(FileManager::removeItemAtPath(path(u"x")), 4,
                QStringLiteral("\u201cx\u201d couldn\u2019t be removed."));
    makeFile(u"file");
    expectError(FileManager::removeItemAtPath(path(u"file/x")), 4,
                QStringLiteral("\u201cx\u201d couldn\u2019t be removed."));
    expectError(FileManager::removeItemAtPath(QString()), 4, QStringLiteral("\u201c\u201d couldn\u2019t be removed."));
}

TEST_F(FileManagerTest, aNameIsNotCutAtAZero)
{
    makeFile(u"x");
    EXPECT_TRUE(FileManager::removeItemAtPath(path(u"x") + QChar(u'\0') + u'y'));
    EXPECT_FALSE(FileManager::fileExistsAtPath(path(u"x") + QChar(u'\0')));
    EXPECT_EQ(contentOf(path(u"x")), "content");
}

TEST_F(FileManagerTest, movesAFile)
{
    makeFolder(u"to");
    EXPECT_EQ(FileManager::moveItemAtPath(makeFile(u"old"), path(u"to/new")), std::nullopt);
    EXPECT_EQ(contentOf(path(u"to/new")), "content");
    EXPECT_FALSE(QFileInfo::exists(path(u"old")));
}

TEST_F(FileManagerTest, movesAFolder)
{
    makeFolder(u"old/a");
    makeFile(u"old/a/file");
    EXPECT_EQ(FileManager::moveItemAtPath(path(u"old"), path(u"new")), std::nullopt);
    EXPECT_EQ(contentOf(path(u"new/a/file")), "content");
    EXPECT_FALSE(QFileInfo::exists(path(u"old")));
}

TEST_F(FileManagerTest, movingNeverReplaces)
{
    const QString text = QStringLiteral(
        "\u201cold\u201d couldn\u2019t be moved to \u201cto\u201d because an item with the same name already exists.");
    makeFolder(u"to/folder");
    makeFile(u"to/file", "kept");
    ASSERT_TRUE(QFile::link(path(u"nowhere"), path(u"to/link")));
    makeFile(u"old");
    expectError(FileManager::moveItemAtPath(path(u"old"), path(u"to/file")), 516, text);
    expectError(FileManager::moveItemAtPath(path(u"old"), path(u"to/folder")), 516, text);
    expectError(FileManager::moveItemAtPath(path(u"old"), path(u"to/link")), 516, text);
    EXPECT_EQ(contentOf(path(u"to/file")), "kept");
    EXPECT_EQ(contentOf(path(u"old")), "content");
    EXPECT_TRUE(QFileInfo(path(u"to/link")).isSymLink());
}

TEST_F(FileManagerTest, aFolderDoesNotReplaceAnEmptyFolder)
{
    makeFolder(u"old");
    makeFolder(u"to/new");
    EXPECT_EQ(FileManager::moveItemAtPath(path(u"old"), path(u"to/new")).value_or(Error()).code, 516);
    EXPECT_TRUE(QFileInfo(path(u"old")).isDir());
}

TEST_F(FileManagerTest, movingWhatIsNotThereOrToNowhereIsAnError)
{
    const QString text = QStringLiteral(
        "\u201cold\u201d couldn\u2019t be moved to \u201cto\u201d because either the former doesn\u2019t "
        "exist, or the folder containing the latter doesn\u2019t exist.");
    expectError(FileManager::moveItemAtPath(path(u"old"), path(u"to/new")), 4, text);
    makeFolder(u"to");
    expectError(FileManager::moveItemAtPath(path(u"old"), path(u"to/new")), 4, text);
    makeFile(u"old");
    ASSERT_TRUE(QDir().rmdir(path(u"to")));
    expectError(FileManager::moveItemAtPath(path(u"old"), path(u"to/new")), 4, text);
    EXPECT_EQ(contentOf(path(u"old")), "content");
}

TEST_F(FileManagerTest, movesALinkAndNotItsTarget)
{
    makeFile(u"target");
    ASSERT_TRUE(QFile::link(path(u"target"), path(u"old")));
    EXPECT_EQ(FileManager::moveItemAtPath(path(u"old"), path(u"new")), std::nullopt);
    EXPECT_TRUE(QFileInfo(path(u"new")).isSymLink());
    EXPECT_EQ(contentOf(path(u"target")), "content");
}

TEST_F(FileManagerTest, createsAFolder)
{
    EXPECT_EQ(FileManager::createDirectoryAtPath(path(u"x"), false), std::nullopt);
    EXPECT_TRUE(QFileInfo(path(u"x")).isDir());
    expectError(
        FileManager::createDirectoryAtPath(path(u"x"), false), 516,
        QStringLiteral(
            "The folder \u201cx\u201d couldn\u2019t be created in \u201c%1\u201d because an item with the same name "
            "already exists.")
            .arg(QFileInfo(m_folder.path()).fileName()));
    EXPECT_EQ(FileManager::createDirectoryAtPath(path(u"a/b"), false).value_or(Error()).code, 4);
}

TEST_F(FileManagerTest, createsTheFoldersOnTheWay)
{
    EXPECT_EQ(FileManager::createDirectoryAtPath(path(u"a/b/c/"), true), std::nullopt);
    EXPECT_TRUE(QFileInfo(path(u"a/b/c")).isDir());
    EXPECT_EQ(FileManager::createDirectoryAtPath(path(u"a/b/c"), true), std::nullopt);
    makeFile(u"file");
    EXPECT_EQ(FileManager::createDirectoryAtPath(path(u"file"), true).value_or(Error()).code, 516);
    EXPECT_TRUE(FileManager::createDirectoryAtPath(path(u"file/x"), true));
    EXPECT_EQ(contentOf(path(u"file")), "content");
}

TEST_F(FileManagerTest, tellsWhatExists)
{
    EXPECT_TRUE(FileManager::fileExistsAtPath(makeFile(u"x")));
    EXPECT_TRUE(FileManager::fileExistsAtPath(makeFolder(u"y")));
    EXPECT_FALSE(FileManager::fileExistsAtPath(path(u"z")));
    EXPECT_FALSE(FileManager::fileExistsAtPath(QString()));
    ASSERT_TRUE(QFile::link(path(u"nowhere"), path(u"link")));
    EXPECT_FALSE(FileManager::fileExistsAtPath(path(u"link")));
}

TEST_F(FileManagerTest, listsTheFilesBelowAFolder)
{
    makeFolder(u"x/a/b");
    makeFolder(u"x/empty");
    makeFile(u"x/1");
    makeFile(u"x/a/\u00fc \u20ac");
    makeFile(u"x/a/b/.3");
    makeFolder(u"other");
    makeFile(u"other/4");
    ASSERT_TRUE(QFile::link(path(u"other"), path(u"x/link")));
    ASSERT_TRUE(QFile::link(path(u"other/4"), path(u"x/file link")));
    ASSERT_TRUE(QFile::link(path(u"nowhere"), path(u"x/broken")));
    EXPECT_THAT(FileManager::filesBelowPath(path(u"x")),
                UnorderedElementsAre(QStringLiteral("1"), QStringLiteral("a/\u00fc \u20ac"), QStringLiteral("a/b/.3"),
                                     QStringLiteral("file link")));
    EXPECT_EQ(FileManager::filesBelowPath(path(u"nowhere")), QStringList());
    EXPECT_EQ(FileManager::filesBelowPath(path(u"x/1")), QStringList());
}

void setMode(const QString& path, mode_t mode)
{
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0);
}

/// Permissions do not hold root back: what is asked of them is asked as somebody else.
class WithoutPermission : public FileManagerTest
{
protected:
    void SetUp() override
    {
        const QString temporary = QDir::tempPath();
        for (const QString& onTheWay : {QFileInfo(temporary).path(), temporary})
            setMode(onTheWay, 0711);
        setMode(m_folder.path(), 0777);
        makeFolder(u"closed");
        makeFile(u"closed/file");
        setMode(path(u"closed"), 0555);
        m_wasRoot = geteuid() == 0;
        if (m_wasRoot) {
            ASSERT_EQ(seteuid(65534), 0);
        }
        const QByteArray reached = QFile::encodeName(path(u"closed/file"));
        if (faccessat(AT_FDCWD, reached.constData(), F_OK, AT_EACCESS) != 0)
            GTEST_SKIP() << "another user cannot reach the temporary folder";
    }

    void TearDown() override
    {
        if (m_wasRoot) {
            ASSERT_EQ(seteuid(0), 0);
        }
        setMode(path(u"closed"), 0755);
        EXPECT_EQ(contentOf(path(u"closed/file")), "content");
    }

    bool m_wasRoot = false;
};

TEST_F(WithoutPermission, removingIsAnError)
{
    expectError(FileManager::removeItemAtPath(path(u"closed/file")), 513,
                QStringLiteral(
                    "\u201cfile\u201d couldn\u2019t be removed because you don\u2019t have permission to access it."));
    expectError(
        FileManager::removeItemAtPath(path(u"closed")), 513,
        QStringLiteral(
            "\u201cclosed\u201d couldn\u2019t be removed because you don\u2019t have permission to access it."));
}

TEST_F(WithoutPermission, movingIsAnError)
{
    makeFile(u"old");
    expectError(FileManager::moveItemAtPath(path(u"old"), path(u"closed/new")), 513,
                QStringLiteral("\u201cold\u201d couldn\u2019t be moved to \u201cclosed\u201d because you don\u2019t "
                               "have permission to access "
                               "\u201cclosed\u201d."));
    EXPECT_EQ(contentOf(path(u"old")), "content");
}

TEST_F(WithoutPermission, creatingAFolderIsAnError)
{
    EXPECT_EQ(FileManager::createDirectoryAtPath(path(u"closed/x"), false).value_or(Error()).code, 513);
    EXPECT_EQ(FileManager::createDirectoryAtPath(path(u"closed/x/y"), true).value_or(Error()).code, 513);
}

/// A second file system, where the machine has one that can be written to.
class AcrossFileSystems : public FileManagerTest
{
protected:
    void SetUp() override
    {
        struct stat here = {};
        struct stat there = {};
        if (!m_elsewhere.isValid() || stat(QFile::encodeName(m_folder.path()).constData(), &here) != 0 ||
            stat(QFile::encodeName(m_elsewhere.path()).constData(), &there) != 0 || here.st_dev == there.st_dev)
            GTEST_SKIP() << "there is no second file system at /dev/shm";
    }

    QTemporaryDir m_elsewhere{QStringLiteral("/dev/shm/files-XXXXXX")};
};

TEST_F(AcrossFileSystems, movesAFile)
{
    const QString destination = m_elsewhere.filePath(QStringLiteral("new"));
    const QByteArray content(3 * 1024 * 1024 + 1, 'x');
    ASSERT_TRUE(QFile::setPermissions(makeFile(u"old", content), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_EQ(FileManager::moveItemAtPath(path(u"old"), destination), std::nullopt);
    EXPECT_EQ(contentOf(destination), content);
    struct stat status = {};
    ASSERT_EQ(stat(QFile::encodeName(destination).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777u, 0500u);
    EXPECT_FALSE(QFileInfo::exists(path(u"old")));
    EXPECT_EQ(FileManager::filesBelowPath(m_elsewhere.path()), QStringList{QStringLiteral("new")});
}

TEST_F(AcrossFileSystems, movesAFolder)
{
    makeFolder(u"old/a");
    makeFile(u"old/a/file");
    ASSERT_TRUE(QFile::link(QStringLiteral("a"), path(u"old/link")));
    const QString destination = m_elsewhere.filePath(QStringLiteral("new"));
    ASSERT_EQ(chmod(QFile::encodeName(path(u"old/a")).constData(), 0750), 0);
    EXPECT_EQ(FileManager::moveItemAtPath(path(u"old"), destination), std::nullopt);
    EXPECT_EQ(contentOf(destination + QStringLiteral("/a/file")), "content");
    struct stat status = {};
    ASSERT_EQ(stat(QFile::encodeName(destination + QStringLiteral("/a")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777u, 0750u);
    EXPECT_TRUE(QFileInfo(destination + QStringLiteral("/link")).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(path(u"old")));
}

TEST_F(AcrossFileSystems, movingNeverReplaces)
{
    const QString destination = m_elsewhere.filePath(QStringLiteral("new"));
    QFile present(destination);
    ASSERT_TRUE(present.open(QIODevice::WriteOnly));
    present.write("kept");
    present.close();
    EXPECT_EQ(FileManager::moveItemAtPath(makeFile(u"old"), destination).value_or(Error()).code, 516);
    EXPECT_EQ(contentOf(destination), "kept");
    EXPECT_EQ(contentOf(path(u"old")), "content");
    EXPECT_EQ(FileManager::filesBelowPath(m_elsewhere.path()), QStringList{QStringLiteral("new")});
}

} // namespace
