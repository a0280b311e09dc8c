#include "platform/foundation/os/FileLock.h"

#include <QTemporaryDir>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Whatever host loads the framework may fork at any moment.
TEST(FileLock, isFreeAfterItsEndAlsoWhenAChildProcessHasTheDescriptor)
{
    const QTemporaryDir folder;
    const std::filesystem::path path = folder.filePath(QStringLiteral("lock")).toStdString();
    tljira::os::FileLock lock;
    ASSERT_EQ(lock.lockFile(path), std::error_code());
    const pid_t child = fork();
    if (child == 0) {
        pause();
        _exit(0);
    }
    tljira::os::FileLock other;
    EXPECT_EQ(other.lockFile(path), std::errc::operation_would_block);
    lock.unlock();
    EXPECT_EQ(other.lockFile(path), std::error_code());
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

} // namespace
