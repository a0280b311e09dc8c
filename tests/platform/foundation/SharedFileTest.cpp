#include "platform/foundation/SharedFile.h"

#include "tests/support/LogCapture.h"
#include "tests/support/Printers.h"
#include "tests/support/WaitUntil.h"
#include "tests/support/WithoutPrivileges.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::StartsWith;
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

class SharedFileTest : public testing::Test
{
protected:
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("sub/deep/file.json"));
};

TEST_F(SharedFileTest, IsMadeWithItsFolderForTheUserAlone)
{
    umask(0);
    SharedFile file(m_path);
    EXPECT_EQ(file.read(), std::nullopt);
    EXPECT_TRUE(file.rewrite([](const std::optional<QByteArray>& present) {
        EXPECT_EQ(present, std::nullopt);
        return QByteArray("one");
    }));
    EXPECT_EQ(file.read(), QByteArray("one"));
    EXPECT_EQ(modeOf(m_path), 0600u);
    EXPECT_EQ(modeOf(QFileInfo(m_path).path()), 0700u);
}

TEST_F(SharedFileTest, AFileThatOthersCouldReadIsClosedWhenRewritten)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(m_path).path()));
    writePlainly(m_path, "one");
    ASSERT_EQ(chmod(QFile::encodeName(m_path).constData(), 0644), 0);
    EXPECT_TRUE(SharedFile(m_path).rewrite(replaceBy("two")));
    EXPECT_EQ(modeOf(m_path), 0600u);
}

TEST_F(SharedFileTest, ARewriteSeesWhatAnotherWrote)
{
    SharedFile first(m_path);
    SharedFile second(m_path);
    EXPECT_TRUE(first.rewrite(replaceBy("one")));
    EXPECT_TRUE(second.rewrite([](const std::optional<QByteArray>& present) { return present.value_or("") + " two"; }));
    EXPECT_EQ(first.read(), QByteArray("one two"));
}

TEST_F(SharedFileTest, LeavesNothingBesideTheFile)
{
    SharedFile file(m_path);
    EXPECT_TRUE(file.rewrite(replaceBy("one")));
    EXPECT_TRUE(file.rewrite(replaceBy("two")));
    EXPECT_THAT(QDir(QFileInfo(m_path).path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                ElementsAre(QStringLiteral("file.json")));
}

TEST_F(SharedFileTest, ConcurrentRewritesLoseNothing)
{
    constexpr int threadCount = 4;
    constexpr int perThread = 25;
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([this] {
                SharedFile file(m_path);
                for (int number = 0; number < perThread; ++number)
                    EXPECT_TRUE(file.rewrite(
                        [](const std::optional<QByteArray>& present) { return present.value_or("") + 'x'; }));
            });
    }
    EXPECT_EQ(SharedFile(m_path).read(), QByteArray(threadCount * perThread, 'x'));
}

TEST_F(SharedFileTest, TellsThatAnotherRewroteTheFile)
{
    SharedFile mine(m_path);
    SharedFile theirs(m_path);
    ASSERT_TRUE(mine.rewrite(replaceBy("one")));
    // Another file of the same length in the same moment is the hardest to tell apart.
    ASSERT_TRUE(theirs.rewrite(replaceBy("two")));
    EXPECT_TRUE(mine.hasChanged());
    EXPECT_TRUE(tests::waitUntil([&] { return !mine.hasChanged(); }));
    EXPECT_FALSE(mine.hasChanged());
    ASSERT_TRUE(theirs.rewrite(replaceBy("six")));
    EXPECT_TRUE(mine.hasChanged());
    EXPECT_TRUE(tests::waitUntil([&] { return !mine.hasChanged(); }));
    ASSERT_TRUE(QFile::remove(m_path));
    EXPECT_TRUE(mine.hasChanged());
    EXPECT_FALSE(mine.hasChanged());
    ASSERT_TRUE(theirs.rewrite(replaceBy("new")));
    EXPECT_TRUE(mine.hasChanged());
}

TEST_F(SharedFileTest, ALockOfADeadProcessIsNoObstacle)
{
    SharedFile file(m_path);
    ASSERT_TRUE(file.rewrite(replaceBy("one")));
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        SharedFile(m_path).rewrite([](const std::optional<QByteArray>&) -> QByteArray {
            raise(SIGKILL);
            return {};
        });
        _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_TRUE(QFileInfo::exists(m_path + QStringLiteral(".lock")));
    EXPECT_TRUE(file.rewrite(replaceBy("two")));
    EXPECT_EQ(file.read(), QByteArray("two"));
}

TEST_F(SharedFileTest, ADiskThatRefusesIsReported)
{
    const tests::LogCapture capture;
    writePlainly(m_folder.filePath(QStringLiteral("sub")), "in the way");
    SharedFile file(m_path);
    bool wasAsked = false;
    EXPECT_FALSE(file.rewrite([&](const std::optional<QByteArray>&) {
        wasAsked = true;
        return QByteArray("one");
    }));
    EXPECT_FALSE(wasAsked);
    ASSERT_EQ(capture.lines().size(), 1);
    EXPECT_EQ(capture.lines().first(), m_path + QStringLiteral(" could not be written: its folder cannot be made"));
}

TEST_F(SharedFileTest, AFolderThatCannotBeWrittenIsReported)
{
    const tests::LogCapture capture;
    const QString folder = QFileInfo(m_path).path();
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    {
        const tests::WithoutPrivileges user;
        EXPECT_FALSE(SharedFile(m_path).rewrite(replaceBy("one")));
    }
    ASSERT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_EQ(capture.lines(),
              QStringList(m_path + QStringLiteral(" could not be written: its folder cannot be written")));
}

TEST_F(SharedFileTest, ADiskWithoutRoomForTheLockIsReported)
{
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // A limit on the size of files stands for the disk's.
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{0, 0};
        setrlimit(RLIMIT_FSIZE, &limit);
        const tests::LogCapture capture;
        const bool isWritten = SharedFile(m_path).rewrite(replaceBy("one"));
        const QStringList expected(m_path + QStringLiteral(" could not be written: there is no room in its folder"));
        _exit(!isWritten && capture.lines() == expected ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(SharedFileTest, AFileThatCannotBeReplacedStaysAsItIs)
{
    const tests::LogCapture capture;
    ASSERT_TRUE(QDir().mkpath(m_path + QStringLiteral("/is a folder")));
    EXPECT_FALSE(SharedFile(m_path).rewrite(replaceBy("one")));
    EXPECT_TRUE(QFileInfo(m_path).isDir());
    ASSERT_EQ(capture.lines().size(), 1);
    EXPECT_EQ(capture.lines().first(),
              m_path + QStringLiteral(" could not be written: its present content cannot be read"));
}

TEST_F(SharedFileTest, AFullDiskLeavesTheOldBytes)
{
    SharedFile file(m_path);
    ASSERT_TRUE(file.rewrite(replaceBy("one")));
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // A limit on the size of files stands for the disk's.
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{4096, 4096};
        setrlimit(RLIMIT_FSIZE, &limit);
        const bool isWritten = SharedFile(m_path).rewrite(replaceBy(QByteArray(100000, 'x')));
        _exit(isWritten ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(file.read(), QByteArray("one"));
    EXPECT_THAT(QDir(QFileInfo(m_path).path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                ElementsAre(QStringLiteral("file.json")));
}

TEST_F(SharedFileTest, SettingAsideTakesTheFirstFreeName)
{
    const tests::LogCapture capture;
    SharedFile file(m_path);
    ASSERT_TRUE(file.rewrite(replaceBy("bad 1")));
    EXPECT_TRUE(file.setAside());
    EXPECT_EQ(file.read(), std::nullopt);
    ASSERT_TRUE(file.rewrite(replaceBy("bad 2")));
    EXPECT_TRUE(file.setAside());
    EXPECT_EQ(SharedFile(m_path + QStringLiteral(".damaged-1")).read(), QByteArray("bad 1"));
    EXPECT_EQ(SharedFile(m_path + QStringLiteral(".damaged-2")).read(), QByteArray("bad 2"));
    EXPECT_THAT(capture.lines(), ElementsAre(m_path + QStringLiteral(" is damaged and was set aside as ") + m_path +
                                                 QStringLiteral(".damaged-1"),
                                             m_path + QStringLiteral(" is damaged and was set aside as ") + m_path +
                                                 QStringLiteral(".damaged-2")));
}

TEST_F(SharedFileTest, WhatIsNotThereCannotBeSetAside)
{
    const tests::LogCapture capture;
    EXPECT_FALSE(SharedFile(m_path).setAside());
    ASSERT_EQ(capture.lines().size(), 1);
    EXPECT_THAT(capture.lines().first().toStdString(),
                StartsWith((m_path + QStringLiteral(" is damaged and cannot be set aside: ")).toStdString()));
}

} // namespace
