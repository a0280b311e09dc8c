#pragma once

#include <QtGlobal>

#include <optional>

namespace tljira::os {

/// What tells of an open file whether somebody wrote to it: how large it is, and when it was last written to, as
/// exactly as the file system knows.
struct FileStamp
{
    qint64 size = 0;
    qint64 seconds = 0;
    qint64 nanoseconds = 0;

    bool operator==(const FileStamp& other) const = default;
};

/// Of the file with this descriptor, whatever its name is by now. Nothing when the system does not tell.
std::optional<FileStamp> stampOfFile(int descriptor);

} // namespace tljira::os
