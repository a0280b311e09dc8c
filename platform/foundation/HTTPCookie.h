#pragma once

#include "platform/foundation/Export.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace platform {

/// One cookie, as a line of the format that libcurl and other tools exchange them in.
struct TL_EXPORT HTTPCookie
{
    static std::optional<HTTPCookie> fromNetscapeLine(const QByteArray& line);

    /// Whether a request to this place carries the cookie. `host` and `path` without escapes resolved.
    bool matches(const QString& scheme, const QString& host, const QString& path) const;

    /// Ends with the process that received it.
    bool isSessionOnly() const { return expires == 0; }

    QString domain;
    bool includesSubdomains = false;
    QString path;
    bool isSecure = false;
    bool isHTTPOnly = false;
    /// Seconds since 1970, 0 for none.
    qint64 expires = 0;
    QString name;
    QString value;
};

} // namespace platform
