#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/loading/HTTPCookie.h"
#include "platform/foundation/values/Error.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace tljira {

/// A cookie jar that sessions share. It accepts every cookie. Cookies that carry an expiry survive the process in a
/// file that only its user can read; the others end with the jar. Jars of several processes may share a file. A file
/// that cannot be understood is kept aside and the jar starts empty. From any thread.
class TL_EXPORT HTTPCookieStorage
{
public:
    /// The jar of the process, made at the first call: "cookies.txt" in the application's data folder
    /// (QStandardPaths::AppDataLocation).
    static const std::shared_ptr<HTTPCookieStorage>& sharedHTTPCookieStorage();

    /// A jar with a file of its own, made with the first cookie that has to be kept. With an empty path it has none,
    /// and all its cookies end with it.
    explicit HTTPCookieStorage(const QString& path);
    ~HTTPCookieStorage();
    HTTPCookieStorage(const HTTPCookieStorage&) = delete;
    HTTPCookieStorage& operator=(const HTTPCookieStorage&) = delete;

    /// What the jar holds, cookies that end with the process included.
    std::vector<HTTPCookie> cookies() const;
    /// Takes the place of the cookie of the same domain, path and name.
    void setCookie(const HTTPCookie& cookie);
    /// Removes every cookie of every host, from the file too; when the disk refuses, with the next change.
    void deleteAllCookies();

    /// Changes are visible at once, and a thread of the jar's own brings them to the file, at the latest when the
    /// process exits. This waits until it has. An error when the disk refuses, or another process has kept the file for
    /// a second; its description is why.
    std::optional<Error> synchronize();

private:
    friend class URLSession;

    struct Parts;
    const std::shared_ptr<Parts> m_parts;
};

} // namespace tljira
