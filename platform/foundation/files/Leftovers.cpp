#include "platform/foundation/files/Leftovers.h"

#include "platform/foundation/Log.h"
#include "platform/foundation/os/FileLock.h"
#include "platform/foundation/os/PrivateFolder.h"

#include <QFile>

#include <filesystem>
#include <vector>

namespace tljira {

namespace {

namespace fs = std::filesystem;
using Time = fs::file_time_type;

/// The newest time of the item and of everything in it; the present where that cannot be known.
Time lastWrite(const fs::path& path)
{
    std::error_code failure;
    Time newest = fs::last_write_time(path, failure);
    fs::recursive_directory_iterator entry;
    if (!failure && fs::is_directory(fs::symlink_status(path, failure)) && !failure)
        entry = fs::recursive_directory_iterator(path, failure);
    for (; !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure)) {
        if (fs::is_symlink(entry->symlink_status(failure)) || failure)
            continue;
        newest = std::max(newest, entry->last_write_time(failure));
    }
    return failure ? Time::clock::now() : newest;
}

void removeIfNobodys(const fs::path& path, std::chrono::hours age)
{
    std::error_code failure;
    const fs::file_type type = fs::symlink_status(path, failure).type();
    if (failure || (type != fs::file_type::regular && type != fs::file_type::directory))
        return;
    os::FileLock lock;
    if (!os::belongsToUser(path) || lock.lockExisting(path))
        return;
    if (age > age.zero() && Time::clock::now() - lastWrite(path) <= age)
        return;
    fs::remove_all(path, failure);
    log(failure ? u"%@, which an earlier run left, could not be removed"
                : u"%@, which an earlier run left, was removed",
        QFile::decodeName(path.c_str()));
}

} // namespace

void removeLeftovers(const QString& folder, const std::function<bool(const QString& name)>& isOurs,
                     std::chrono::hours age)
{
    std::error_code failure;
    std::vector<fs::path> candidates;
    fs::directory_iterator entry(fs::path(QFile::encodeName(folder).toStdString()), failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        if (isOurs(QFile::decodeName(entry->path().filename().c_str())))
            candidates.push_back(entry->path());
    }
    for (const fs::path& candidate : candidates)
        removeIfNobodys(candidate, age);
}

} // namespace tljira
