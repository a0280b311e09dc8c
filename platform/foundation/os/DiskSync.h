#pragma once

#include <cstdio>
#include <filesystem>
#include <system_error>

/// What a port to another system has to provide for bytes that outlive a power cut.
namespace tljira::os {

/// Returns when what was written to the file, which has no buffer of its own, is on the disk.
std::error_code syncToDisk(std::FILE* file);

/// Returns when the names in the folder are on the disk: after a rename, the new name is. Nothing to do, and no error,
/// where the file system has no such thing.
std::error_code syncFolder(const std::filesystem::path& folder);

} // namespace tljira::os
