#pragma once

#include "platform/foundation/Export.h"

#include <QString>

#include <optional>

namespace tljira {

/// The parts of an address that matter here, as the platform reads them.
struct TL_EXPORT URL
{
    /// Nothing for a text that no address can be made of: empty, or with blanks, control characters or quotation marks.
    static std::optional<URL> parse(const QString& text);

    /// What precedes the first ":", where the text starts with a letter and only letters, digits, "+", "-" and "."
    /// precede it.
    std::optional<QString> scheme;
    /// As typed, without user, password and port; an IPv6 address without its brackets.
    std::optional<QString> host;
    /// What stands behind the host and a ":", whatever it is; nothing where that is nothing.
    std::optional<QString> port;
    /// What follows up to a query or a fragment, as typed; empty, or from a "/" on.
    QString path;
};

} // namespace tljira
