#pragma once

#include "platform/foundation/Export.h"

#include <QString>

/// Paths as texts. None of these looks at a disk.
namespace tljira {

/// One slash between the two, none at the end, and none repeated except in a leading "scheme://".
TL_EXPORT QString appendingPathComponent(const QString& path, const QString& component);
/// The path itself when there is nothing that could carry an extension: an empty path or "/".
TL_EXPORT QString appendingPathExtension(const QString& path, const QString& extension);
TL_EXPORT QString deletingPathExtension(const QString& path);
TL_EXPORT QString pathExtension(const QString& path);
TL_EXPORT QString deletingLastPathComponent(const QString& path);
TL_EXPORT QString lastPathComponent(const QString& path);

/// Makes one component of `name`, whatever it holds: separators and control characters become "_", characters that
/// override the direction of writing go, "." and ".." and the empty name become "_", and a name of more bytes than a
/// file system takes is shortened before its extension. For names that others send.
TL_EXPORT QString fileNameFromUntrustedText(const QString& name);

} // namespace tljira
