#pragma once

#include "platform/foundation/HTTPCookieStorage.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace platform {

enum class HTTPCookieAcceptPolicy { Always = 0 };

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

    bool HTTPShouldSetCookies = true;
    std::shared_ptr<platform::HTTPCookieStorage> HTTPCookieStorage;
    platform::HTTPCookieAcceptPolicy HTTPCookieAcceptPolicy = platform::HTTPCookieAcceptPolicy::Always;
    QStringList routes;
    QString userAgent;
};

} // namespace platform
