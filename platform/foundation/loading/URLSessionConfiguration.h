#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace tljira {

/// Which cookies of an answer the jar takes: all of them.
enum class HTTPCookieAcceptPolicy { Always = 0 };

/// How a session speaks to servers. A session keeps the configuration that it was made with.
struct TL_EXPORT URLSessionConfiguration
{
    /// A fresh configuration with the process's jar and routes.
    static URLSessionConfiguration defaultSessionConfiguration();

    /// Routes that every later default configuration starts with, as "HOST:PORT:ADDRESS:PORT" each: who asks for the
    /// first pair is connected to the second, while the request itself keeps naming the first. For programs that reach
    /// a server at another place than its name says.
    static void setDefaultRoutes(const QStringList& routes);

    /// Whether a text has the form of a route.
    static bool isRoute(const QString& text);

    /// Whether the jar takes part in requests at all: sends its cookies and takes up those of answers.
    bool HTTPShouldSetCookies = true;
    /// The jar; null for none.
    std::shared_ptr<tljira::HTTPCookieStorage> HTTPCookieStorage;
    /// See the enumeration.
    tljira::HTTPCookieAcceptPolicy HTTPCookieAcceptPolicy = tljira::HTTPCookieAcceptPolicy::Always;
    ///@{
    /// Where a value of one of these is no good, every request ends with an error that says so, and nothing is sent.

    /// Routes of this session, in the form of setDefaultRoutes().
    QStringList routes;
    /// The field "User-Agent" of every request. Control characters, line ends among them, are no good.
    QString userAgent;
    /// The proxy of every request: "http://HOST:PORT", "socks5://HOST:PORT" or, if the proxy is to look up the names of
    /// servers, "socks5h://HOST:PORT", each with or without "USER:PASSWORD@" before the host, percent-encoded. An empty
    /// text stands for none at all. Nothing stands for what the environment says: http_proxy, https_proxy and
    /// no_proxy, which otherwise do not count.
    std::optional<QString> proxy = {};
    /// A file of certificates in PEM form, or a folder with such files, of authorities that may vouch for servers.
    /// Empty for none but the system's.
    QString authorities = {};
    ///@}
    /// Whether the system's authorities, or those that SSL_CERT_FILE and SSL_CERT_DIR name, count beside `authorities`.
    bool trustsSystemAuthorities = true;
};

} // namespace tljira
