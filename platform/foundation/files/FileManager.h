#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"

#include <QString>
#include <QStringList>

#include <optional>

/// Operations on files and folders. Each answers the error that stopped it, nothing when it worked. From any thread.
namespace tljira::FileManager {

/// Removes a file, or a folder with everything in it. A symbolic link is removed, never what it points to.
TL_EXPORT std::optional<Error> removeItemAtPath(const QString& path);

/// Never replaces: an item at `destination` is an error. Within one file system the move is atomic.
TL_EXPORT std::optional<Error> moveItemAtPath(const QString& source, const QString& destination);

/// A folder that is there already is no error where `withIntermediateDirectories` is set.
TL_EXPORT std::optional<Error> createDirectoryAtPath(const QString& path, bool withIntermediateDirectories);

bool fileExistsAtPath(const QString& path);

/// Everything below the folder that exists and is not a folder, at any depth, relative to the folder. Links to folders
/// are not followed.
TL_EXPORT QStringList filesBelowPath(const QString& folder);

} // namespace tljira::FileManager
