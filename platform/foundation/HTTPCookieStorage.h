#pragma once

#include "platform/foundation/HTTPCookie.h"
#include "platform/foundation/SharedFile.h"

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace platform {

class CurlShare;

/// The cookie jar of the process: libcurl's engine, shared by all transfers. It accepts every cookie. Cookies that
/// carry an expiry survive the process in a file of the application's data folder (XDG_DATA_HOME) that only the user
/// can read; the others end with it. Processes of the same application share the file: each writes only what it
/// changed. A file that cannot be understood is kept aside and the jar starts empty. From any thread.
class TL_EXPORT HTTPCookieStorage
{
public:
    /// The process-wide jar; its place is fixed at the first call.
    static const std::shared_ptr<HTTPCookieStorage>& sharedHTTPCookieStorage();

    explicit HTTPCookieStorage(const QString& path);
    ~HTTPCookieStorage();

    std::vector<HTTPCookie> cookies() const;
    void setCookie(const HTTPCookie& cookie);
    /// Removes every cookie of every host, from the file too; when the disk refuses, with the next change.
    void deleteAllCookies();

    /// The engine, for the transfers.
    CurlShare& share() const { return *m_share; }
    /// Brings the file up to date with the engine; called by a transfer whose answer set cookies.
    void saveChanges();

private:
    void load();
    std::optional<std::vector<HTTPCookie>> usableCookies(const std::optional<QByteArray>& present) const;
    std::vector<HTTPCookie> persistentCookies() const;

    std::unique_ptr<CurlShare> m_share;
    std::mutex m_fileMutex;
    SharedFile m_file;
    /// The persistent cookies that the engine and the file had in common when they last met.
    std::vector<HTTPCookie> m_saved;
    /// The disk refused when the file was to be emptied; the next change makes up for it.
    bool m_mustEmptyFile = false;
};

} // namespace platform
