#include "platform/foundation/os/FileStamp.h"

#include <sys/stat.h>

namespace tljira::os {

std::optional<FileStamp> stampOfFile(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0)
        return std::nullopt;
#ifdef __APPLE__
    const timespec& written = status.st_mtimespec;
#else
    const timespec& written = status.st_mtim;
#endif
    return FileStamp{status.st_size, written.tv_sec, written.tv_nsec};
}

} // namespace tljira::os
