#pragma once

#include <QByteArray>

#include <filesystem>
#include <system_error>

namespace tljira {

/// Puts a file of these bytes, which only the user can read, in the place of what is at `path`. Whatever fails, also a
/// power cut, leaves the old bytes or the new ones, whole. When there is no error, the new ones are on the disk.
///
/// The bytes are written beside the file, under its name with a point and six letters or digits behind it.
std::error_code replaceFile(const std::filesystem::path& path, const QByteArray& bytes);

/// Whether a name is one under which `replaceFile` writes beside the file `name`.
bool isNameBesideFile(const QString& candidate, const QString& name);

} // namespace tljira
