#pragma once

#include <filesystem>
#include <system_error>

/// What a port to another system has to provide for locks that end with the process that holds them.
namespace tljira::os {

/// The system's own lock on a file or a folder. It keeps out other processes and other objects of this one that lock
/// the same item, and nobody else. However a process ends, its locks end with it.
class FileLock
{
public:
    FileLock() = default;
    ~FileLock() { unlock(); }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Locks the file, which is made for the user alone when it is missing, without waiting. The error is
    /// operation_would_block when somebody else has the lock.
    std::error_code lockFile(const std::filesystem::path& path);
    /// The same for a file or a folder that is there; a link is not followed.
    std::error_code lockExisting(const std::filesystem::path& path);
    void unlock();

private:
    std::error_code lockOpened();

    int m_descriptor = -1;
};

} // namespace tljira::os
