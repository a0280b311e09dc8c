#pragma once

#include <QString>
#include <QUrl>

namespace client {

/// The key as it can stand in an address, which the client puts it into as it is.
inline QString escapedKey(const QString& key)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(key.trimmed()));
}

} // namespace client
