#include "platform/foundation/files/FileManager.h"

#include "tests/kit/Printers.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>

namespace {

using namespace tljira;

/// A volume of 256 KiB that only this process sees. The system grants it to root.
class SmallVolume : public testing::Test
{
protected:
    void SetUp() override
    {
        if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", m_volumePath.constData(), "tmpfs", 0, "size=256k") != 0)
            GTEST_SKIP() << "volumes cannot be mounted here";
        m_isMounted = true;
    }

    void TearDown() override
    {
        if (m_isMounted) {
            EXPECT_EQ(umount(m_volumePath.constData()), 0);
        }
    }

    void makeReadOnly()
    {
        ASSERT_EQ(mount(nullptr, m_volumePath.constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    }

    QString makeFile(const QString& path, qsizetype size) const
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(QByteArray(size, 'x')), size);
        return path;
    }

    QTemporaryDir m_folder;
    QTemporaryDir m_volume;
    QByteArray m_volumePath = QFile::encodeName(m_volume.path());
    bool m_isMounted = false;
};

TEST_F(SmallVolume, aFileThatDoesNotFitStaysWhereItWas)
{
    const QString source = makeFile(m_folder.filePath(QStringLiteral("old")), 1000000);
    const auto error = FileManager::moveItemAtPath(source, m_volume.filePath(QStringLiteral("new")));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, 640);
    EXPECT_EQ(error->localizedDescription(),
              QStringLiteral("“old” couldn’t be moved to “%1” because there isn’t enough space.")
                  .arg(QFileInfo(m_volume.path()).fileName()));
    EXPECT_EQ(FileManager::filesBelowPath(m_volume.path()), QStringList());
    EXPECT_EQ(QFileInfo(source).size(), 1000000);
}

TEST_F(SmallVolume, aFolderThatDoesNotFitStaysWhereItWas)
{
    const QString source = m_folder.filePath(QStringLiteral("old"));
    ASSERT_EQ(FileManager::createDirectoryAtPath(source + QStringLiteral("/sub"), true), std::nullopt);
    makeFile(source + QStringLiteral("/fits"), 1000);
    makeFile(source + QStringLiteral("/sub/does not"), 1000000);
    const auto error = FileManager::moveItemAtPath(source, m_volume.filePath(QStringLiteral("new")));
    EXPECT_EQ(error.value_or(Error()).code, 640);
    EXPECT_EQ(FileManager::filesBelowPath(m_volume.path()), QStringList());
    EXPECT_EQ(FileManager::filesBelowPath(source).size(), 2);
}

TEST_F(SmallVolume, nothingIsChangedWhereItIsReadOnly)
{
    const QString present = makeFile(m_volume.filePath(QStringLiteral("x")), 10);
    const QString source = makeFile(m_folder.filePath(QStringLiteral("old")), 10);
    makeReadOnly();
    const auto removal = FileManager::removeItemAtPath(present);
    ASSERT_TRUE(removal);
    EXPECT_EQ(removal->code, 642);
    EXPECT_EQ(removal->localizedDescription(),
              QStringLiteral("“x” couldn’t be removed because the volume is read only."));
    EXPECT_EQ(FileManager::moveItemAtPath(source, m_volume.filePath(QStringLiteral("new"))).value_or(Error()).code,
              642);
    EXPECT_EQ(FileManager::createDirectoryAtPath(m_volume.filePath(QStringLiteral("y")), false).value_or(Error()).code,
              642);
    EXPECT_TRUE(QFileInfo::exists(source));
    EXPECT_TRUE(QFileInfo::exists(present));
}

} // namespace
