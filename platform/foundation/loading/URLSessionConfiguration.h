#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"

#include <QString>
#include <QStringList>

#include <memory>

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
    /// Routes of this session, in the form of setDefaultRoutes().
    QStringList routes;
    /// The field "User-Agent" of every request.
    QString userAgent;
};

} // namespace tljira
