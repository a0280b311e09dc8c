#pragma once

#include "platform/foundation/HTTPCookieStorage.h"
#include "platform/foundation/SharedFile.h"
#include "platform/foundation/curl/CurlShare.h"

#include <mutex>
#include <optional>
#include <vector>

namespace tljira {

/// libcurl's cookie engine, shared by all transfers, and the file that keeps its cookies. The file is shared by
/// processes: each writes only what it changed. From any thread.
class CookieJar
{
public:
    explicit CookieJar(const QString& path);

    std::vector<HTTPCookie> cookies() const;
    void setCookie(const HTTPCookie& cookie);
    void deleteAllCookies();

    /// The engine, for the transfers.
    CurlShare& share() { return m_share; }
    /// Brings the file up to date with the engine; called by a transfer whose answer set cookies.
    void saveChanges();

private:
    void load();
    std::optional<std::vector<HTTPCookie>> usableCookies(const std::optional<QByteArray>& present) const;
    std::vector<HTTPCookie> persistentCookies() const;

    CurlShare m_share;
    std::mutex m_fileMutex;
    SharedFile m_file;
    /// The persistent cookies that the engine and the file had in common when they last met.
    std::vector<HTTPCookie> m_saved;
    /// The disk refused when the file was to be emptied; the next change makes up for it.
    bool m_mustEmptyFile = false;
};

struct HTTPCookieStorage::Parts : CookieJar
{
    using CookieJar::CookieJar;
};

} // namespace tljira
