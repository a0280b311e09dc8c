#include "client/tasks/DocumentCopy.h"

#include "client/tasks/FetchedFile.h"
#include "platform/foundation/files/TemporaryDirectory.h"
#include "platform/foundation/os/FileLock.h"
#include "tests/kit/Files.h"
#include "tests/kit/WaitUntil.h"
#include "tests/platform/foundation/RoomFor.h"

#include <QDir>
#include <QFileInfo>

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <chrono>
#include <filesystem>

namespace {

using client::DocumentCopy;
namespace FetchedFile = client::FetchedFile;

/// The bits that the file system has, whoever runs the test.
unsigned modeOf(const QString& path)
{
    struct stat about = {};
    EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &about), 0);
    return about.st_mode & 07777U;
}

QString temporary(const QString& name)
{
    return tljira::temporaryDirectory() + u'/' + name;
}

/// Processes that let everybody read what they write, as some are started.
class PrivateFiles : public testing::Test
{
protected:
    PrivateFiles()
        : m_before(::umask(0))
    {
    }
    ~PrivateFiles() override { ::umask(m_before); }

private:
    const mode_t m_before;
};

TEST_F(PrivateFiles, aCopyAndItsFolderAreForItsUserAlone)
{
    DocumentCopy copy;
    unsigned whileWritten = 0;
    ASSERT_EQ(copy.write({QStringLiteral("plan"),
                          [&](QIODevice& device) {
                              whileWritten = modeOf(dynamic_cast<QFile&>(device).fileName());
                              return device.write("wool") == 4;
                          }}),
              std::nullopt);

    EXPECT_EQ(whileWritten, 0600U);
    EXPECT_EQ(modeOf(copy.path()), 0600U);
    EXPECT_EQ(modeOf(QFileInfo(copy.path()).path()), 0700U);
}

TEST_F(PrivateFiles, soAreFetchedFilesAndTheirFolders)
{
    const QString arrived = temporary(QStringLiteral("arrived"));
    tests::writeFile(arrived, "wool");
    ASSERT_TRUE(QFile::setPermissions(arrived, QFile::ReadOwner | QFile::WriteOwner));
    const auto place = FetchedFile::take(arrived, QStringLiteral("plan.tessaloom"));
    ASSERT_EQ(place.problem, std::nullopt);

    EXPECT_EQ(modeOf(place.path), 0600U);
    EXPECT_EQ(modeOf(QFileInfo(place.path).path()), 0700U);
}

TEST(DocumentCopy, goesWithItsFolder)
{
    {
        DocumentCopy copy;
        ASSERT_EQ(copy.write({QStringLiteral("plan"), "wool"}), std::nullopt);
        EXPECT_EQ(tests::contentsOf(copy.path()), QByteArray("wool"));
    }
    EXPECT_EQ(QDir(tljira::temporaryDirectory()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
}

TEST(DocumentCopy, isMadeOfASingleByte)
{
    DocumentCopy copy;
    ASSERT_EQ(copy.write({QStringLiteral("plan"), "w"}), std::nullopt);
    EXPECT_EQ(tests::contentsOf(copy.path()), QByteArray("w"));
}

TEST(DocumentCopy, hasFailedWhereTheLastBytesFindNoRoom)
{
    const tests::RoomFor little(4);
    DocumentCopy copy;
    // Which nobody has noticed when the writer returns.
    const auto writer = [](QIODevice& device) { return device.write("warp and weft") == 13; };
    EXPECT_EQ(copy.write({QStringLiteral("plan"), writer}), qt_error_string(EFBIG));
}

TEST(DocumentCopy, hasFailedWhereTheWriterGoesOnAfterBytesThatFoundNoRoom)
{
    DocumentCopy copy;
    const auto writer = [](QIODevice& device) {
        {
            const tests::RoomFor little(65536);
            EXPECT_EQ(device.write(QByteArray(1 << 20, 'w')), -1);
        }
        return device.write("weft") == 4;
    };
    EXPECT_EQ(copy.write({QStringLiteral("plan"), writer}), qt_error_string(EFBIG));
}

TEST(DocumentCopy, isLockedAsLongAsItLives)
{
    QString folder;
    {
        DocumentCopy copy;
        ASSERT_EQ(copy.write({QStringLiteral("plan"), "wool"}), std::nullopt);
        folder = QFileInfo(copy.path()).path();
        EXPECT_TRUE(folder.contains(QStringLiteral("/Upload-")));
        tljira::os::FileLock other;
        EXPECT_EQ(other.lockExisting(QFile::encodeName(folder).toStdString()), std::errc::operation_would_block);
    }
    EXPECT_FALSE(QFileInfo::exists(folder));
}

TEST(DocumentCopy, isLockedBeforeItHasTheNameOfOne)
{
    // A folder of that name without a lock may be removed at any moment.
    DocumentCopy copy;
    bool wasLocked = false;
    ASSERT_EQ(copy.write({QStringLiteral("plan"),
                          [&](QIODevice& device) {
                              const QString folder = QFileInfo(dynamic_cast<QFile&>(device).fileName()).path();
                              tljira::os::FileLock other;
                              wasLocked = bool(other.lockExisting(QFile::encodeName(folder).toStdString()));
                              return true;
                          }}),
              std::nullopt);
    EXPECT_TRUE(wasLocked);
}

TEST(DocumentCopy, leftByAnotherProcessGoesUnlessThatLivesOrTheNameIsNew)
{
    namespace fs = std::filesystem;
    const auto make = [](const char* name, std::chrono::hours age) {
        const fs::path folder = QFile::encodeName(temporary(QString::fromLatin1(name))).toStdString();
        fs::create_directory(folder);
        tests::writeFile(QString::fromStdString(folder / "document"), "wool");
        const auto time = fs::file_time_type::clock::now() - age;
        fs::last_write_time(folder / "document", time);
        fs::last_write_time(folder, time);
    };
    using std::chrono::hours;
    make("Upload-left", hours(0));
    make("Upload-locked", hours(48));
    make("NewUpload-young", hours(1));
    make("NewUpload-old", hours(48));
    make("Fetched-old", hours(48));
    tljira::os::FileLock owner;
    ASSERT_FALSE(owner.lockExisting(QFile::encodeName(temporary(QStringLiteral("Upload-locked"))).toStdString()));

    DocumentCopy::tidyOnce();
    const auto left = [] {
        return QDir(tljira::temporaryDirectory()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
    };
    EXPECT_TRUE(tests::waitUntil([&] { return left().size() <= 3; }));
    EXPECT_EQ(left(), QStringList({QStringLiteral("Fetched-old"), QStringLiteral("NewUpload-young"),
                                   QStringLiteral("Upload-locked")}));
}

TEST(FetchedFile, goesWithItsFolder)
{
    const QString arrived = temporary(QStringLiteral("arrived"));
    tests::writeFile(arrived, "wool");
    const auto place = FetchedFile::take(arrived, QStringLiteral("plan.tessaloom"));
    ASSERT_EQ(place.problem, std::nullopt);
    FetchedFile::remove(place.path);

    EXPECT_EQ(QDir(tljira::temporaryDirectory()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
}

TEST(FetchedFile, leavesNoFolderWhereThereIsNothingToTake)
{
    const auto place = FetchedFile::take(temporary(QStringLiteral("nothing")), QStringLiteral("plan.tessaloom"));

    EXPECT_NE(place.problem, std::nullopt);
    EXPECT_EQ(place.path, QString());
    EXPECT_EQ(QDir(tljira::temporaryDirectory()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
}

} // namespace
