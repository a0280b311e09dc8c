#include "platform/foundation/os/DiskSync.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace tljira::os {

namespace {

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

} // namespace

std::error_code syncToDisk(std::FILE* file)
{
    return ::fsync(::fileno(file)) == 0 ? std::error_code() : lastError();
}

FolderSync::FolderSync(const std::filesystem::path& folder)
    : m_descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (m_descriptor < 0 && errno != EACCES)
        m_error = lastError();
}

FolderSync::~FolderSync()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

std::error_code FolderSync::wait() const
{
    const bool isOnDisk = m_descriptor < 0 || ::fsync(m_descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
    return isOnDisk ? std::error_code() : lastError();
}

} // namespace tljira::os
