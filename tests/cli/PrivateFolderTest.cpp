#include "cli/PrivateFolder.h"

#include "tests/kit/NoDescriptors.h"
#include "tests/kit/Printers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace Qt::StringLiterals;

QStringList itemsOf(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

TEST(PrivateFolder, isHiddenAndForItsUserOnly)
{
    const QTemporaryDir parent;
    cli::PrivateFolder folder;
    ASSERT_EQ(folder.create(parent.path()), std::nullopt);
    const QStringList items = itemsOf(parent.path());
    ASSERT_EQ(items.size(), 1);
    EXPECT_TRUE(items.first().startsWith(u".tljira-"_s));
    const auto permissions = QFile::permissions(parent.filePath(items.first()));
    EXPECT_EQ(permissions & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser),
              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST(PrivateFolder, goesWithEverythingInIt)
{
    const QTemporaryDir parent;
    {
        cli::PrivateFolder folder;
        ASSERT_EQ(folder.create(parent.path()), std::nullopt);
        QFile file(folder.pathOf(u"file"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(QDir().mkdir(folder.pathOf(u"folder"_s)));
        EXPECT_EQ(itemsOf(parent.path()).size(), 1);
    }
    EXPECT_EQ(itemsOf(parent.path()), QStringList());
}

TEST(PrivateFolder, saysWhyItCannotBeMade)
{
    cli::PrivateFolder folder;
    const auto error = folder.create(u"/no/such/folder"_s);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, 4);
    EXPECT_TRUE(error->localizedDescription().endsWith(u"couldn’t be created in “folder” because the latter doesn’t "
                                                       u"exist."_s));
}

TEST(PrivateFolder, goesWithWhatItWasAskedForThoughNothingCanBeOpened)
{
    const QTemporaryDir parent;
    auto folder = std::make_unique<cli::PrivateFolder>();
    ASSERT_EQ(folder->create(parent.path()), std::nullopt);
    ASSERT_TRUE(QFile(folder->pathOf(u"file"_s)).open(QIODevice::WriteOnly));
    {
        const tests::NoDescriptors none;
        folder.reset();
    }
    EXPECT_EQ(itemsOf(parent.path()), QStringList());
}

} // namespace
