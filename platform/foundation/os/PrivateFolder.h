#pragma once

#include <QString>

#include <filesystem>

/// What a port to another system has to provide for folders that belong to one user.
namespace tljira::os {

/// A text that differs between the users of the machine and stays the same for each.
QString userIdentifier();

/// Whether the item, a link itself included, is one of the user's own.
bool belongsToUser(const std::filesystem::path& path);

/// Makes the folder, or takes one that is there, and sees to it that nobody but the user gets in. False when it cannot
/// be had, is a link, or belongs to somebody else.
bool ensurePrivateFolder(const QString& path);

} // namespace tljira::os
