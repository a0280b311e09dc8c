#include "platform/foundation/files/FileManager.h"

#include "tests/kit/Printers.h"
#include "tests/kit/SmallDisk.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace tljira;

class SmallVolume : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!m_disk.isThere())
            GTEST_SKIP() << "volumes cannot be mounted here";
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
    tests::SmallDisk m_disk{m_volume.path(), 256};
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
    ASSERT_TRUE(m_disk.makeReadOnly());
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
