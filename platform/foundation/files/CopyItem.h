#pragma once

#include <filesystem>
#include <system_error>

namespace tljira {

/// Copies a file, a link or a folder with everything in it to a place where nothing is yet, down to the permissions.
/// What was copied before a failure is left there. The standard library's own copying does not tell a full disk from
/// other failures.
std::error_code copyItem(const std::filesystem::path& source, const std::filesystem::path& destination);

} // namespace tljira
