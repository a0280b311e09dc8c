#include "platform/foundation/files/ScratchFolder.h"

#include "tests/kit/NoDescriptors.h"
#include "tests/kit/Printers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace Qt::StringLiterals;

const QString prefix = u".plan-"_s;

QStringList itemsOf(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

TEST(ScratchFolder, isForItsUserOnly)
{
    const QTemporaryDir parent;
    tljira::ScratchFolder folder;
    ASSERT_EQ(folder.create(parent.path(), prefix), std::nullopt);
    const QStringList items = itemsOf(parent.path());
    ASSERT_EQ(items.size(), 1);
    EXPECT_TRUE(items.first().startsWith(prefix));
    const auto permissions = QFile::permissions(parent.filePath(items.first()));
    EXPECT_EQ(permissions & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser),
              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST(ScratchFolder, goesWithEverythingInIt)
{
    const QTemporaryDir parent;
    {
        tljira::ScratchFolder folder;
        ASSERT_EQ(folder.create(parent.path(), prefix), std::nullopt);
        QFile file(folder.pathOf(u"file"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(QDir().mkdir(folder.pathOf(u"folder"_s)));
        EXPECT_EQ(itemsOf(parent.path()).size(), 1);
    }
    EXPECT_EQ(itemsOf(parent.path()), QStringList());
}

TEST(ScratchFolder, staysItsOwnersUnderAnotherPrefix)
{
    const QTemporaryDir parent;
    {
        tljira::ScratchFolder folder;
        ASSERT_EQ(folder.create(parent.path(), u"New"_s), std::nullopt);
        ASSERT_EQ(folder.rename(u"Upload"_s), std::nullopt);
        ASSERT_TRUE(QFile(folder.pathOf(u"file"_s)).open(QIODevice::WriteOnly));
        const QStringList items = itemsOf(parent.path());
        ASSERT_EQ(items.size(), 1);
        EXPECT_TRUE(items.first().startsWith(u"Upload"_s));
        tljira::os::FileLock another;
        EXPECT_TRUE(another.lockExisting(QFile::encodeName(parent.filePath(items.first())).toStdString()));
    }
    EXPECT_EQ(itemsOf(parent.path()), QStringList());
}

TEST(ScratchFolder, saysWhyItCannotBeMade)
{
    tljira::ScratchFolder folder;
    const auto error = folder.create(u"/no/such/folder"_s, prefix);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, 4);
    EXPECT_TRUE(error->localizedDescription().endsWith(u"couldn’t be created in “folder” because the latter doesn’t "
                                                       u"exist."_s));
}

TEST(ScratchFolder, goesWithWhatItWasAskedForThoughNothingCanBeOpened)
{
    const QTemporaryDir parent;
    auto folder = std::make_unique<tljira::ScratchFolder>();
    ASSERT_EQ(folder->create(parent.path(), prefix), std::nullopt);
    ASSERT_TRUE(QFile(folder->pathOf(u"file"_s)).open(QIODevice::WriteOnly));
    {
        const tests::NoDescriptors none;
        folder.reset();
    }
    EXPECT_EQ(itemsOf(parent.path()), QStringList());
}

} // namespace
