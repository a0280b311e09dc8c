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

std::error_code syncFolder(const std::filesystem::path& folder)
{
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    // A folder may be written without being read.
    if (descriptor < 0)
        return errno == EACCES ? std::error_code() : lastError();
    std::error_code error;
    if (::fsync(descriptor) != 0 && errno != EINVAL && errno != ENOTSUP)
        error = lastError();
    ::close(descriptor);
    return error;
}

} // namespace tljira::os
