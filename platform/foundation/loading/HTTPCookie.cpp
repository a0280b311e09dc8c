#include "platform/foundation/loading/HTTPCookie.h"

#include <QList>

namespace tljira {

namespace {

constexpr char httpOnlyPrefix[] = "#HttpOnly_";

bool pathMatches(const QString& cookiePath, const QString& path)
{
    if (!path.startsWith(cookiePath))
        return cookiePath.isEmpty();
    return path.size() == cookiePath.size() || cookiePath.endsWith(u'/') || path.at(cookiePath.size()) == u'/';
}

} // namespace

std::optional<HTTPCookie> HTTPCookie::fromNetscapeLine(const QByteArray& line)
{
    const bool isHTTPOnly = line.startsWith(httpOnlyPrefix);
    const QList<QByteArray> fields = line.mid(isHTTPOnly ? qsizetype(sizeof httpOnlyPrefix - 1) : 0).split('\t');
    bool isNumber = false;
    if (fields.size() != 7 || fields[0].isEmpty() || fields[0].startsWith('#') || fields[5].isEmpty())
        return std::nullopt;

    HTTPCookie cookie;
    cookie.domain = QString::fromUtf8(fields[0]);
    cookie.includesSubdomains = fields[1] == "TRUE";
    cookie.path = QString::fromUtf8(fields[2]);
    cookie.isSecure = fields[3] == "TRUE";
    cookie.isHTTPOnly = isHTTPOnly;
    cookie.expires = fields[4].toLongLong(&isNumber);
    cookie.name = QString::fromUtf8(fields[5]);
    cookie.value = QString::fromUtf8(fields[6]);
    if (!isNumber)
        return std::nullopt;
    return cookie;
}

QByteArray HTTPCookie::netscapeLine() const
{
    const auto truth = [](bool isSo) { return QByteArray(isSo ? "TRUE" : "FALSE"); };
    return (isHTTPOnly ? QByteArray(httpOnlyPrefix) : QByteArray()) +
           QByteArrayList{domain.toUtf8(), truth(includesSubdomains),   path.toUtf8(),
                          truth(isSecure), QByteArray::number(expires), name.toUtf8(),
                          value.toUtf8()}
               .join('\t');
}

bool HTTPCookie::matches(const QString& scheme, const QString& host, const QString& requestPath) const
{
    if (isSecure && scheme.compare(u"https", Qt::CaseInsensitive) != 0)
        return false;
    const QString site = domain.startsWith(u'.') ? domain.mid(1) : domain;
    const bool sameHost = host.compare(site, Qt::CaseInsensitive) == 0;
    const bool below = includesSubdomains && host.endsWith(u'.' + site, Qt::CaseInsensitive);
    return (sameHost || below) && pathMatches(path, requestPath.isEmpty() ? QStringLiteral("/") : requestPath);
}

bool HTTPCookie::isSameSlotAs(const HTTPCookie& other) const
{
    return name == other.name && path == other.path && domain.compare(other.domain, Qt::CaseInsensitive) == 0;
}

} // namespace tljira
