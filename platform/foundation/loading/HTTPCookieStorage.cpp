#include "platform/foundation/loading/HTTPCookieStorage.h"

#include "platform/foundation/loading/curl/CookieJar.h"

#include <QStandardPaths>

namespace tljira {

const std::shared_ptr<HTTPCookieStorage>& HTTPCookieStorage::sharedHTTPCookieStorage()
{
    // Never destroyed: transfers may still use it while the process ends.
    static const auto& storage = *new std::shared_ptr<HTTPCookieStorage>(std::make_shared<HTTPCookieStorage>(
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/cookies.txt")));
    return storage;
}

HTTPCookieStorage::HTTPCookieStorage(const QString& path)
    : m_parts(std::make_shared<Parts>(path))
{
}

HTTPCookieStorage::~HTTPCookieStorage() = default;

std::vector<HTTPCookie> HTTPCookieStorage::cookies() const
{
    return m_parts->cookies();
}

void HTTPCookieStorage::setCookie(const HTTPCookie& cookie)
{
    m_parts->setCookie(cookie);
}

void HTTPCookieStorage::deleteAllCookies()
{
    m_parts->deleteAllCookies();
}

std::optional<Error> HTTPCookieStorage::synchronize()
{
    return m_parts->synchronize();
}

} // namespace tljira
