#pragma once

#include "platform/foundation/Export.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace platform {

/// One cookie, as a line of the format that libcurl and other tools exchange them in.
struct TL_EXPORT HTTPCookie
{
    /// Nothing for a comment, an empty line or a line that is none of the format.
    static std::optional<HTTPCookie> fromNetscapeLine(const QByteArray& line);
    QByteArray netscapeLine() const;

    /// Whether a request to this place carries the cookie.
    bool matches(const QString& scheme, const QString& host, const QString& requestPath) const;

    /// Whether the one takes the place of the other: domain, path and name are those of a jar's key.
    bool isSameSlotAs(const HTTPCookie& other) const;

    /// Ends with the process that received it.
    bool isSessionOnly() const { return expires == 0; }

    bool operator==(const HTTPCookie& other) const = default;

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
