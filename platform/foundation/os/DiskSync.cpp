#include "platform/foundation/os/DiskSync.h"

#include <cerrno>
#include <unistd.h>

namespace tljira::os {

std::error_code syncToDisk(std::FILE* file)
{
    return ::fsync(::fileno(file)) == 0 ? std::error_code() : std::error_code(errno, std::generic_category());
}

} // namespace tljira::os
