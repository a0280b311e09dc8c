#include "platform/foundation/settings/SharedFile.h"

#include "platform/foundation/os/FileLock.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/OldFiles.h"
#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"
#include "tests/kit/WithoutPrivileges.h"
#include "tests/platform/foundation/FailingSync.h"
#include "tests/platform/foundation/RoomFor.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::StartsWith;
using testing::UnorderedElementsAre;
using tljira::SharedFile;

mode_t modeOf(const QString& path)
{
    struct stat status = {};
    EXPECT_EQ(stat(QFile::encodeName(path).constData(), &status), 0);
    return status.st_mode & 07777;
}

auto replaceBy(const QByteArray& bytes)
{
    return [bytes](const std::optional<QByteArray>&) { return bytes; };
}

void writePlainly(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// Nobody keeps a lock so long here.
constexpr auto patience = std::chrono::seconds(30);

bool rewrite(SharedFile& file, const SharedFile::Change& change)
{
    return !file.rewrite(change, patience);
}

class SharedFileTest : public testing::Test
{
protected:
    QStringList itemsBeside() const
    {
        return QDir(QFileInfo(m_path).path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::filesystem::path lockPath() const { return (m_path + QStringLiteral(".lock")).toStdString(); }

    static void writeLongAgo(const QString& path)
    {
        writePlainly(path, "left");
        tests::makeOlder(path, std::chrono::hours(25));
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("sub/deep/file.json"));
};

TEST_F(SharedFileTest, isMadeWithItsFolderForTheUserAlone)
{
    umask(0);
    SharedFile file(m_path);
    EXPECT_EQ(file.read(), std::nullopt);
    EXPECT_TRUE(rewrite(file, [](const std::optional<QByteArray>& present) {
        EXPECT_EQ(present, std::nullopt);
        return QByteArray("one");
    }));
    EXPECT_EQ(file.read(), QByteArray("one"));
    EXPECT_EQ(modeOf(m_path), 0600u);
    EXPECT_EQ(modeOf(QFileInfo(m_path).path()), 0700u);
}

TEST_F(SharedFileTest, aFileThatOthersCouldReadIsClosedWhenRewritten)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(m_path).path()));
    writePlainly(m_path, "one");
    ASSERT_EQ(chmod(QFile::encodeName(m_path).constData(), 0644), 0);
    SharedFile file(m_path);
    EXPECT_TRUE(rewrite(file, replaceBy("two")));
    EXPECT_EQ(modeOf(m_path), 0600u);
}

TEST_F(SharedFileTest, aRewriteSeesWhatAnotherWrote)
{
    SharedFile first(m_path);
    SharedFile second(m_path);
    EXPECT_TRUE(rewrite(first, replaceBy("one")));
    EXPECT_TRUE(
        rewrite(second, [](const std::optional<QByteArray>& present) { return present.value_or("") + " two"; }));
    EXPECT_EQ(first.read(), QByteArray("one two"));
}

TEST_F(SharedFileTest, leavesNothingBesideTheFileButWhatIsLocked)
{
    SharedFile file(m_path);
    EXPECT_TRUE(rewrite(file, replaceBy("one")));
    EXPECT_TRUE(rewrite(file, replaceBy("two")));
    EXPECT_THAT(itemsBeside(), ElementsAre(QStringLiteral("file.json"), QStringLiteral("file.json.lock")));
}

TEST_F(SharedFileTest, concurrentRewritesLoseNothing)
{
    constexpr int threadCount = 4;
    constexpr int perThread = 25;
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([this] {
                SharedFile file(m_path);
                for (int number = 0; number < perThread; ++number)
                    EXPECT_TRUE(rewrite(
                        file, [](const std::optional<QByteArray>& present) { return present.value_or("") + 'x'; }));
            });
    }
    EXPECT_EQ(SharedFile(m_path).read(), QByteArray(threadCount * perThread, 'x'));
}

TEST_F(SharedFileTest, tellsThatAnotherRewroteTheFile)
{
    SharedFile mine(m_path);
    SharedFile theirs(m_path);
    ASSERT_TRUE(rewrite(mine, replaceBy("one")));
    // Another file of the same length in the same moment is the hardest to tell apart.
    ASSERT_TRUE(rewrite(theirs, replaceBy("two")));
    EXPECT_TRUE(mine.hasChanged());
    EXPECT_TRUE(tests::waitUntil([&] { return !mine.hasChanged(); }));
    EXPECT_FALSE(mine.hasChanged());
    ASSERT_TRUE(rewrite(theirs, replaceBy("six")));
    EXPECT_TRUE(mine.hasChanged());
    EXPECT_TRUE(tests::waitUntil([&] { return !mine.hasChanged(); }));
    ASSERT_TRUE(QFile::remove(m_path));
    EXPECT_TRUE(mine.hasChanged());
    EXPECT_FALSE(mine.hasChanged());
    ASSERT_TRUE(rewrite(theirs, replaceBy("new")));
    EXPECT_TRUE(mine.hasChanged());
}

TEST_F(SharedFileTest, aLockOfADeadProcessIsNoObstacle)
{
    SharedFile file(m_path);
    ASSERT_TRUE(rewrite(file, replaceBy("one")));
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        SharedFile(m_path).rewrite(
            [](const std::optional<QByteArray>&) -> QByteArray {
                raise(SIGKILL);
                return {};
            },
            patience);
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_TRUE(QFileInfo::exists(m_path + QStringLiteral(".lock")));
    EXPECT_TRUE(rewrite(file, replaceBy("two")));
    EXPECT_EQ(file.read(), QByteArray("two"));
}

TEST_F(SharedFileTest, aDiskThatRefusesIsReported)
{
    const tests::LogCapture capture;
    writePlainly(m_folder.filePath(QStringLiteral("sub")), "in the way");
    SharedFile file(m_path);
    bool wasAsked = false;
    EXPECT_FALSE(rewrite(file, [&](const std::optional<QByteArray>&) {
        wasAsked = true;
        return QByteArray("one");
    }));
    EXPECT_FALSE(wasAsked);
    ASSERT_EQ(capture.lines().size(), 1);
    EXPECT_EQ(capture.lines().first(), m_path + QStringLiteral(" could not be written: its folder cannot be made"));
}

TEST_F(SharedFileTest, aFolderThatCannotBeWrittenIsReported)
{
    const tests::LogCapture capture;
    const QString folder = QFileInfo(m_path).path();
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    {
        const tests::WithoutPrivileges user;
        SharedFile file(m_path);
        EXPECT_FALSE(rewrite(file, replaceBy("one")));
    }
    ASSERT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_EQ(
        capture.lines(),
        QStringList(m_path + QStringLiteral(" could not be written: its lock cannot be taken: Permission denied")));
}

TEST_F(SharedFileTest, aFileThatCannotBeReplacedStaysAsItIs)
{
    const tests::LogCapture capture;
    ASSERT_TRUE(QDir().mkpath(m_path + QStringLiteral("/is a folder")));
    SharedFile file(m_path);
    EXPECT_FALSE(rewrite(file, replaceBy("one")));
    EXPECT_TRUE(QFileInfo(m_path).isDir());
    ASSERT_EQ(capture.lines().size(), 1);
    EXPECT_EQ(capture.lines().first(),
              m_path + QStringLiteral(" could not be written: its present content cannot be read"));
}

TEST_F(SharedFileTest, aFullDiskLeavesTheOldBytesHoweverMuchRoomThereIs)
{
    const tests::LogCapture capture;
    const QByteArray bytes(300, 'x');
    SharedFile file(m_path);
    ASSERT_TRUE(rewrite(file, replaceBy("one")));
    for (int room = 0; room < bytes.size(); ++room) {
        const tests::RoomFor disk(static_cast<rlim_t>(room));
        ASSERT_EQ(file.rewrite(replaceBy(bytes), patience), QStringLiteral("File too large")) << room;
        ASSERT_EQ(file.read(), QByteArray("one")) << room;
    }
    EXPECT_THAT(itemsBeside(), ElementsAre(QStringLiteral("file.json"), QStringLiteral("file.json.lock")));
    const tests::RoomFor disk(static_cast<rlim_t>(bytes.size()));
    EXPECT_TRUE(rewrite(file, replaceBy(bytes)));
    EXPECT_EQ(file.read(), bytes);
}

TEST_F(SharedFileTest, aFullDiskHasRoomForTheLock)
{
    const tests::LogCapture capture;
    SharedFile file(m_path);
    const tests::RoomFor disk(0);
    EXPECT_EQ(file.rewrite(replaceBy("one"), patience), QStringLiteral("File too large"));
    EXPECT_EQ(file.read(), std::nullopt);
}

TEST_F(SharedFileTest, everyCallOfTheDiskThatFailsIsReported)
{
    const tests::LogCapture capture;
    SharedFile file(m_path);
    ASSERT_TRUE(rewrite(file, replaceBy("one")));
    // The file's, and the folder's when the new name is there already.
    for (const auto& [call, left] : {std::pair(1, "one"), std::pair(2, "two")}) {
        const tests::FailingSync failing(call);
        EXPECT_EQ(file.rewrite(replaceBy("two"), patience), QStringLiteral("Input/output error"));
        EXPECT_EQ(file.read(), QByteArray(left));
    }
    EXPECT_THAT(itemsBeside(), ElementsAre(QStringLiteral("file.json"), QStringLiteral("file.json.lock")));
}

TEST_F(SharedFileTest, isNotTouchedWhenItHoldsTheBytesAlready)
{
    SharedFile file(m_path);
    ASSERT_TRUE(rewrite(file, replaceBy("one")));
    const tests::FailingSync failing(1);
    EXPECT_TRUE(rewrite(file, replaceBy("one")));
    EXPECT_TRUE(rewrite(file, [](const auto&) { return std::nullopt; }));
}

TEST_F(SharedFileTest, aLinkStaysALink)
{
    const QString elsewhere = m_folder.filePath(QStringLiteral("elsewhere.json"));
    writePlainly(elsewhere, "one");
    ASSERT_TRUE(QDir().mkpath(QFileInfo(m_path).path()));
    ASSERT_TRUE(QFile::link(elsewhere, m_path));
    SharedFile file(m_path);
    EXPECT_TRUE(rewrite(file, replaceBy("two")));
    EXPECT_TRUE(QFileInfo(m_path).isSymLink());
    EXPECT_EQ(SharedFile(elsewhere).read(), QByteArray("two"));
}

TEST_F(SharedFileTest, waitsForAnotherNoLongerThanItMay)
{
    const tests::LogCapture capture;
    SharedFile file(m_path);
    ASSERT_TRUE(rewrite(file, replaceBy("one")));
    tljira::os::FileLock others;
    ASSERT_FALSE(others.lockExisting(lockPath()));
    EXPECT_EQ(file.rewrite(replaceBy("two"), std::chrono::milliseconds(20)),
              QStringLiteral("another process keeps it locked"));
    EXPECT_EQ(file.read(), QByteArray("one"));
    {
        const std::jthread waiting([&] { EXPECT_TRUE(rewrite(file, replaceBy("two"))); });
        EXPECT_TRUE(tests::waitUntil([&] { return file.isWaiting(); }));
        others.unlock();
    }
    EXPECT_FALSE(file.isWaiting());
    EXPECT_EQ(file.read(), QByteArray("two"));
}

TEST_F(SharedFileTest, canBeToldToWaitNoLonger)
{
    const tests::LogCapture capture;
    SharedFile file(m_path);
    ASSERT_TRUE(rewrite(file, replaceBy("one")));
    tljira::os::FileLock others;
    ASSERT_FALSE(others.lockExisting(lockPath()));
    const std::jthread waiting([&] {
        EXPECT_EQ(file.rewrite(replaceBy("two"), std::chrono::hours(1)),
                  QStringLiteral("another process keeps it locked"));
    });
    EXPECT_TRUE(tests::waitUntil([&] { return file.isWaiting(); }));
    file.stopWaiting();
}

TEST_F(SharedFileTest, removesWhatAKilledRewriteLeftLongAgo)
{
    const tests::LogCapture capture;
    SharedFile file(m_path);
    ASSERT_TRUE(rewrite(file, replaceBy("one")));
    for (const char* name : {"file.json.aB3xYz", "file.json.damaged-1", "file.json.aB3xY", "other.json.aB3xYz"})
        writeLongAgo(QFileInfo(m_path).path() + u'/' + QLatin1String(name));
    writePlainly(m_path + QStringLiteral(".zzzzzz"), "new");
    file.removeLeftovers();
    EXPECT_THAT(itemsBeside(),
                UnorderedElementsAre(QStringLiteral("file.json"), QStringLiteral("file.json.lock"),
                                     QStringLiteral("file.json.damaged-1"), QStringLiteral("file.json.aB3xY"),
                                     QStringLiteral("other.json.aB3xYz"), QStringLiteral("file.json.zzzzzz")));
}

TEST_F(SharedFileTest, settingAsideTakesTheFirstFreeName)
{
    const tests::LogCapture capture;
    SharedFile file(m_path);
    ASSERT_TRUE(rewrite(file, replaceBy("bad 1")));
    EXPECT_TRUE(file.setAside());
    EXPECT_EQ(file.read(), std::nullopt);
    ASSERT_TRUE(rewrite(file, replaceBy("bad 2")));
    EXPECT_TRUE(file.setAside());
    EXPECT_EQ(SharedFile(m_path + QStringLiteral(".damaged-1")).read(), QByteArray("bad 1"));
    EXPECT_EQ(SharedFile(m_path + QStringLiteral(".damaged-2")).read(), QByteArray("bad 2"));
    EXPECT_THAT(capture.lines(), ElementsAre(m_path + QStringLiteral(" is damaged and was set aside as ") + m_path +
                                                 QStringLiteral(".damaged-1"),
                                             m_path + QStringLiteral(" is damaged and was set aside as ") + m_path +
                                                 QStringLiteral(".damaged-2")));
}

TEST_F(SharedFileTest, whatIsNotThereCannotBeSetAside)
{
    const tests::LogCapture capture;
    EXPECT_FALSE(SharedFile(m_path).setAside());
    ASSERT_EQ(capture.lines().size(), 1);
    EXPECT_THAT(capture.lines().first().toStdString(),
                StartsWith((m_path + QStringLiteral(" is damaged and cannot be set aside: ")).toStdString()));
}

TEST_F(SharedFileTest, whatCannotBeLookedAtIsNotTakenForAbsent)
{
    const tests::LogCapture capture;
    ASSERT_TRUE(QDir().mkpath(QFileInfo(m_path).path()));
    SharedFile file(m_path);
    EXPECT_TRUE(file.isAbsent());
    // It leads to itself.
    ASSERT_TRUE(QFile::link(m_path, m_path));
    EXPECT_FALSE(file.isAbsent());
    EXPECT_EQ(file.rewrite(replaceBy("one"), patience), SharedFile::reasonWhenUnread());
    EXPECT_TRUE(QFileInfo(m_path).isSymLink());
}

} // namespace
