#pragma once

#include "platform/foundation/Export.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tljira {

/// One cookie of a jar.
struct TL_EXPORT HTTPCookie
{
    /// The cookie of a line in the format of Netscape's cookie file, which many tools exchange. Nothing for a comment,
    /// an empty line or a line that is none of the format.
    static std::optional<HTTPCookie> fromNetscapeLine(const QByteArray& line);
    /// The cookie as a line of that format, without a line feed.
    QByteArray netscapeLine() const;

    /// Whether a request to this place carries the cookie.
    bool matches(const QString& scheme, const QString& host, const QString& requestPath) const;

    /// Whether the one takes the place of the other: domain, path and name are those of a jar's key.
    bool isSameSlotAs(const HTTPCookie& other) const;

    /// Ends with the process that received it.
    bool isSessionOnly() const { return expires == 0; }

    /// All fields are the same.
    bool operator==(const HTTPCookie& other) const = default;

    /// The host whose cookie it is.
    QString domain;
    /// Whether hosts below `domain` get it too.
    bool includesSubdomains = false;
    /// The addresses on the host that get it are those at and below this path.
    QString path;
    /// Leaves with requests over TLS only.
    bool isSecure = false;
    /// Not meant for scripts; of no effect here.
    bool isHTTPOnly = false;
    /// Seconds since 1970, 0 for none.
    qint64 expires = 0;
    ///@{
    /// What the request carries, as name=value.
    QString name;
    QString value;
    ///@}
};

} // namespace tljira
