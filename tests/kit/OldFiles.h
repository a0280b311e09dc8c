#pragma once

#include <QFile>

#include <chrono>
#include <filesystem>

namespace tests {

/// Makes a file, or a folder and all in it, look as if it had been written so long ago.
inline void makeOlder(const QString& path, std::chrono::minutes age)
{
    namespace fs = std::filesystem;
    const fs::path item(QFile::encodeName(path).toStdString());
    const auto time = fs::file_time_type::clock::now() - age;
    if (fs::is_directory(fs::symlink_status(item))) {
        for (const auto& entry : fs::recursive_directory_iterator(item))
            fs::last_write_time(entry.path(), time);
    }
    fs::last_write_time(item, time);
}

} // namespace tests
