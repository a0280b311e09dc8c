#pragma once

#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "platform/foundation/loading/curl/CurlShare.h"
#include "platform/foundation/settings/BackgroundWriter.h"
#include "platform/foundation/settings/SharedFile.h"

#include <mutex>
#include <optional>
#include <vector>

namespace tljira {

/// libcurl's cookie engine, shared by all transfers, and the file that keeps its cookies, which a thread of the jar's
/// own writes. The file is shared by processes: each writes only what it changed. From any thread.
class CookieJar
{
public:
    explicit CookieJar(const QString& path);

    std::vector<HTTPCookie> cookies() const;
    void setCookie(const HTTPCookie& cookie);
    void deleteAllCookies();
    /// Waits until the file is up to date; why it is not, otherwise.
    std::optional<Error> synchronize();

    /// The engine, for the transfers.
    CurlShare& share() { return m_share; }
    /// Brings the file up to date with the engine; called by a transfer whose answer set cookies.
    void saveChanges() { m_writer.ask(); }

private:
    void load();
    void work();
    void store();
    std::optional<std::vector<HTTPCookie>> usableCookies(const std::optional<QByteArray>& present) const;
    std::vector<HTTPCookie> persistentCookies() const;

    CurlShare m_share;
    SharedFile m_file;
    /// Around everything below, never while the disk is waited for.
    std::mutex m_mutex;
    /// The persistent cookies that the engine and the file had in common when they last met.
    std::vector<HTTPCookie> m_saved;
    /// What the file holds is to go; it may be more than this process knows of.
    bool m_mustEmptyFile = false;
    /// The file cannot be understood.
    bool m_isDamaged = false;
    unsigned m_deletions = 0;
    std::optional<QString> m_failure;
    /// Of the writer's thread.
    bool m_hasClearedAway = false;
    /// Last: its thread uses all of the above.
    BackgroundWriter m_writer;
};

struct HTTPCookieStorage::Parts : CookieJar
{
    using CookieJar::CookieJar;
};

} // namespace tljira
