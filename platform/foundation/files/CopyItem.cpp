#include "platform/foundation/files/CopyItem.h"

#include "platform/foundation/os/DiskSync.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <vector>

namespace tljira {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t BufferSize = std::size_t(1024) * 1024;

struct Closing
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closing>;

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

std::error_code copyBytes(std::FILE* from, std::FILE* to)
{
    // The blocks are large enough as they are.
    std::setvbuf(from, nullptr, _IONBF, 0);
    std::setvbuf(to, nullptr, _IONBF, 0);
    std::vector<char> buffer(BufferSize);
    for (;;) {
        const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), from);
        if (std::fwrite(buffer.data(), 1, count, to) != count || std::ferror(from))
            return lastError();
        if (count < buffer.size())
            return {};
    }
}

std::error_code copyFile(const fs::path& source, const fs::path& destination)
{
    const File from(std::fopen(source.string().c_str(), "rb"));
    if (!from)
        return lastError();
    File to(std::fopen(destination.string().c_str(), "wbx"));
    if (!to)
        return lastError();

    // Before the first byte: nobody may read the copy who may not read the original.
    std::error_code failure;
    fs::permissions(destination, fs::status(source, failure).permissions(), failure);
    if (!failure)
        failure = copyBytes(from.get(), to.get());
    // The original may be removed as soon as the copy is made.
    if (!failure)
        failure = os::syncToDisk(to.get());
    // Some disks tell only now that they are full.
    if (std::fclose(to.release()) != 0 && !failure)
        failure = lastError();
    return failure;
}

std::error_code copyFolder(const fs::path& source, const fs::path& destination)
{
    std::error_code failure;
    fs::create_directory(destination, failure);
    fs::directory_iterator entry;
    if (!failure)
        entry = fs::directory_iterator(source, failure);
    while (!failure && entry != fs::directory_iterator()) {
        failure = copyItem(entry->path(), destination / entry->path().filename());
        if (!failure)
            entry.increment(failure);
    }
    if (!failure)
        fs::permissions(destination, fs::status(source, failure).permissions(), failure);
    return failure;
}

} // namespace

std::error_code copyItem(const fs::path& source, const fs::path& destination)
{
    std::error_code failure;
    switch (fs::symlink_status(source, failure).type()) {
    case fs::file_type::regular:
        return copyFile(source, destination);
    case fs::file_type::directory:
        return copyFolder(source, destination);
    case fs::file_type::symlink:
        fs::copy_symlink(source, destination, failure);
        return failure;
    default:
        return failure ? failure : std::make_error_code(std::errc::not_supported);
    }
}

} // namespace tljira
