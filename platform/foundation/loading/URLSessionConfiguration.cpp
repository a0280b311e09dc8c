#include "platform/foundation/loading/URLSessionConfiguration.h"

#include "platform/foundation/values/Match.h"

#include <mutex>

namespace tljira {

namespace {

std::mutex routesMutex;

QStringList& defaultRoutes()
{
    static QStringList& routes = *new QStringList;
    return routes;
}

} // namespace

URLSessionConfiguration URLSessionConfiguration::defaultSessionConfiguration()
{
    URLSessionConfiguration configuration;
    configuration.HTTPCookieStorage = tljira::HTTPCookieStorage::sharedHTTPCookieStorage();
    configuration.userAgent = QStringLiteral(TL_USER_AGENT);
    const std::lock_guard lock(routesMutex);
    configuration.routes = defaultRoutes();
    return configuration;
}

void URLSessionConfiguration::setDefaultRoutes(const QStringList& routes)
{
    const std::lock_guard lock(routesMutex);
    defaultRoutes() = routes;
}

bool URLSessionConfiguration::isRoute(const QString& text)
{
    // Never destroyed: the network thread may ask while the process exits.
    static const auto& form = *new QRegularExpression(
        QStringLiteral(R"(^(\[[0-9A-Fa-f:.]+\]|[^:\[\]]*):(\d*):(\[[0-9A-Fa-f:.]+\]|[^:\[\]]*):(\d*)$)"));
    return match(form, text).hasMatch();
}

} // namespace tljira
