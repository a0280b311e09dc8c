#pragma once

#include "platform/foundation/HTTPCookie.h"

#include <memory>
#include <vector>

namespace platform {

class CurlShare;

/// The cookie jar of the process: libcurl's engine, shared by all transfers. It accepts every cookie. Cookies that
/// carry an expiry survive the process in a file of the application's data folder (XDG_DATA_HOME) that only the user
/// can read; the others end with it. A file that cannot be understood is kept aside and the jar starts empty. From any
/// thread.
class TL_EXPORT HTTPCookieStorage
{
public:
    /// The process-wide jar; its place is fixed at the first call.
    static const std::shared_ptr<HTTPCookieStorage>& sharedHTTPCookieStorage();

    explicit HTTPCookieStorage(const QString& path);
    ~HTTPCookieStorage();

    std::vector<HTTPCookie> cookies() const;
    void setCookie(const HTTPCookie& cookie);
    /// Removes every cookie of every host, from the file too.
    void deleteAllCookies();

    /// For the transfers: the engine's handle, and the word that an answer may have changed the jar.
    CurlShare& share() const { return *m_share; }
    void saveChanges();

private:
    std::unique_ptr<CurlShare> m_share;
};

} // namespace platform
