#include "platform/foundation/os/ExclusiveRename.h"

#include <cerrno>

#if defined(__linux__)
#include <cstdio>
#include <fcntl.h>
#endif

namespace tljira::os {

namespace {

std::error_code checkThenRename(const std::filesystem::path& source, const std::filesystem::path& destination)
{
    std::error_code error;
    if (std::filesystem::symlink_status(destination, error).type() != std::filesystem::file_type::not_found)
        return error ? error : std::make_error_code(std::errc::file_exists);
    std::filesystem::rename(source, destination, error);
    return error;
}

} // namespace

std::error_code renameExclusively(const std::filesystem::path& source, const std::filesystem::path& destination)
{
#if defined(__linux__)
    if (renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, destination.c_str(), RENAME_NOREPLACE) == 0)
        return {};
    // Some file systems of the network do not know the flag.
    if (errno != EINVAL && errno != ENOSYS)
        return {errno, std::generic_category()};
#endif
    return checkThenRename(source, destination);
}

} // namespace tljira::os
