#pragma once

#include "platform/foundation/Export.h"

#include <QString>

#include <optional>

/// Documents that were fetched, each alone in a folder of its own that nobody but its user enters.
namespace client::FetchedFile {

/// Moves the file there, under a name made of the one that the server has for it. Answers where it is.
struct Place
{
    QString path;
    /// Why it is in no place; nothing if it is.
    std::optional<QString> problem;
};
TL_EXPORT Place take(const QString& file, const QString& name);

/// With its folder.
TL_EXPORT void remove(const QString& path);

} // namespace client::FetchedFile
