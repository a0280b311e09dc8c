#include "platform/foundation/loading/curl/TemporaryFile.h"

#include "platform/foundation/files/TemporaryDirectory.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/NoDescriptors.h"
#include "tests/kit/OldFiles.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

using tljira::TemporaryFile;

TEST(TemporaryFile, ofAKilledProcessGoesOfALivingOneStays)
{
    const tests::LogCapture log;
    TemporaryFile living;
    ASSERT_TRUE(living.open());
    tests::makeOlder(living.path(), std::chrono::hours(25));
    const QString left = tljira::temporaryDirectory() + QStringLiteral("/Download_0123.tmp");
    const QString document = tljira::temporaryDirectory() + QStringLiteral("/plan.tmp");
    for (const QString& path : {left, document}) {
        ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
        tests::makeOlder(path, std::chrono::hours(25));
    }
    TemporaryFile::removeLeftovers();
    EXPECT_TRUE(QFileInfo::exists(living.path()));
    EXPECT_FALSE(QFileInfo::exists(left));
    EXPECT_TRUE(QFileInfo::exists(document));
}

TEST(TemporaryFile, goesWithItsOwner)
{
    QString path;
    {
        TemporaryFile file;
        ASSERT_TRUE(file.open());
        path = file.path();
        EXPECT_TRUE(file.write("bytes", 5));
        EXPECT_TRUE(file.close());
        EXPECT_EQ(QFileInfo(path).size(), 5);
    }
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST(TemporaryFile, doesNotBlameTheDiskForAFileThatCannotBeOpened)
{
    // A sanitizer needs descriptors to look at the first object of a class.
    TemporaryFile first;
    ASSERT_TRUE(first.open());
    TemporaryFile file;
    {
        const tests::NoDescriptors none;
        ASSERT_FALSE(file.open());
    }
    ASSERT_TRUE(file.error());
    EXPECT_EQ(file.error()->localizedDescription(),
              QStringLiteral("The download couldn’t be saved: Too many open files"));
}

} // namespace
