#include "platform/foundation/os/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tljira::os {

std::error_code FileLock::lockFile(const std::filesystem::path& path)
{
    unlock();
    m_descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, S_IRUSR | S_IWUSR);
    return lockOpened();
}

std::error_code FileLock::lockExisting(const std::filesystem::path& path)
{
    unlock();
    m_descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    return lockOpened();
}

std::error_code FileLock::lockOpened()
{
    if (m_descriptor >= 0 && flock(m_descriptor, LOCK_EX | LOCK_NB) == 0)
        return {};
    const std::error_code error(errno, std::generic_category());
    unlock();
    return error;
}

void FileLock::unlock()
{
    if (m_descriptor >= 0) {
        // Closing alone leaves the lock to a child process that a fork has given the descriptor.
        flock(m_descriptor, LOCK_UN);
        close(m_descriptor);
    }
    m_descriptor = -1;
}

} // namespace tljira::os
