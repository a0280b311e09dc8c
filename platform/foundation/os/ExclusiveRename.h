#pragma once

#include <filesystem>
#include <system_error>

/// What a port to another system has to provide for a rename that never replaces.
namespace tljira::os {

/// Renames within one file system. Something at `destination` is the error file_exists. Where the system cannot do both
/// in one step, another process that creates `destination` at the same moment may lose what it created.
std::error_code renameExclusively(const std::filesystem::path& source, const std::filesystem::path& destination);

} // namespace tljira::os
