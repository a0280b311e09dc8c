#pragma once

#include "platform/foundation/values/Error.h"

#include <QString>

#include <optional>

/// Documents that were fetched, each alone in a folder of its own that nobody but its user enters.
namespace FetchedFile {

/// Moves the file there, under a name made of the one that the server has for it. Answers where it is.
struct Place
{
    QString path;
    std::optional<tljira::Error> error;
};
Place take(const QString& file, const QString& name);

/// With its folder.
void remove(const QString& path);

} // namespace FetchedFile
