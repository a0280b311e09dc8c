#include "platform/foundation/values/Error.h"

#include <QJsonObject>

namespace tljira {

namespace {

QString transportText(URLError code, const QString& host)
{
    switch (code) {
    case URLError::Cancelled:
        return QStringLiteral("cancelled");
    case URLError::BadURL:
        return QStringLiteral("bad URL");
    case URLError::TimedOut:
        return QStringLiteral("The request timed out.");
    case URLError::UnsupportedURL:
        return QStringLiteral("unsupported URL");
    case URLError::CannotFindHost:
        return QStringLiteral("A server with the specified hostname could not be found.");
    case URLError::CannotConnectToHost:
        return QStringLiteral("Could not connect to the server.");
    case URLError::NetworkConnectionLost:
        return QStringLiteral("The network connection was lost.");
    case URLError::HTTPTooManyRedirects:
        return QStringLiteral("too many HTTP redirects");
    case URLError::ResourceUnavailable:
        return QStringLiteral("The request could not be started: the system has no thread or memory left for it.");
    case URLError::NotConnectedToInternet:
        return QStringLiteral("The Internet connection appears to be offline.");
    case URLError::CannotDecodeContentData:
        return QStringLiteral("cannot decode content data");
    case URLError::CannotParseResponse:
        return QStringLiteral("cannot parse response");
    case URLError::AppTransportSecurityRequiresSecureConnection:
        return QStringLiteral("The server sends this request on from https to http, where others can read it. Nothing "
                              "was sent there.");
    case URLError::DataLengthExceedsMaximum:
        return QStringLiteral("resource exceeds maximum size");
    case URLError::SecureConnectionFailed:
        return QStringLiteral("An SSL error has occurred and a secure connection to the server cannot be made.");
    case URLError::ServerCertificateUntrusted:
        return QStringLiteral("The certificate for this server is invalid. You might be connecting to a server that is "
                              "pretending to be “%1” which could put your confidential information at risk.")
            .arg(host);
    }
    return {};
}

} // namespace

QString Error::localizedDescription() const
{
    const QJsonValue own = userInfo ? userInfo->toObject().value(QLatin1String(localizedDescriptionKey)) : QJsonValue();
    if (own.isString())
        return own.toString();
    return QStringLiteral("The operation couldn’t be completed. (%1 error %2.)").arg(domain, QString::number(code));
}

QString describe(const Error& error)
{
    QString text = error.localizedDescription();
    text.replace(u'\n', QLatin1String("\\n"));
    return QStringLiteral("Error Domain=%1 Code=%2 \"%3\"").arg(error.domain, QString::number(error.code), text);
}

Error makeError(const QString& domain, qint64 code, const QString& localizedDescription)
{
    return Error{domain, code, QJsonObject{{QLatin1String(Error::localizedDescriptionKey), localizedDescription}}};
}

Error makeURLError(URLError code, const QString& host)
{
    return makeError(QLatin1String(URLErrorDomain), static_cast<qint64>(code), transportText(code, host));
}

Error makeFileError(FileError code, const QString& localizedDescription)
{
    return makeError(QLatin1String(CocoaErrorDomain), static_cast<qint64>(code), localizedDescription);
}

} // namespace tljira
