#include "platform/foundation/loading/curl/CookieJar.h"

#include "platform/foundation/Log.h"
#include "platform/foundation/files/FileManager.h"

#include <QDateTime>

#include <algorithm>

namespace tljira {

namespace {

/// Nobody waits for the thread that waits so long.
constexpr auto PatienceWithOthers = std::chrono::seconds(10);

constexpr char fileHeader[] = "# Netscape HTTP Cookie File\n";

/// Nothing when a line is neither a comment nor a cookie.
std::optional<std::vector<HTTPCookie>> cookiesOfFile(const QByteArray& bytes)
{
    std::vector<HTTPCookie> cookies;
    for (const QByteArray& line : bytes.split('\n')) {
        if (const auto cookie = HTTPCookie::fromNetscapeLine(line))
            cookies.push_back(*cookie);
        else if (!line.trimmed().isEmpty() && !line.startsWith("# "))
            return std::nullopt;
    }
    return cookies;
}

QByteArray fileOfCookies(const std::vector<HTTPCookie>& cookies)
{
    QByteArray bytes = fileHeader;
    for (const HTTPCookie& cookie : cookies)
        bytes += cookie.netscapeLine() + '\n';
    return bytes;
}

bool holdsSlot(const std::vector<HTTPCookie>& cookies, const HTTPCookie& cookie)
{
    return std::ranges::any_of(cookies, [&](const HTTPCookie& other) { return other.isSameSlotAs(cookie); });
}

/// What other processes left in the file, with what this process added, replaced and removed since `before`. A cookie
/// whose time is over was not removed: another process may hold a renewed one.
std::vector<HTTPCookie> merged(std::vector<HTTPCookie> inFile, const std::vector<HTTPCookie>& before,
                               const std::vector<HTTPCookie>& now)
{
    const qint64 present = QDateTime::currentSecsSinceEpoch();
    std::erase_if(inFile, [&](const HTTPCookie& cookie) {
        const auto own = std::ranges::find_if(before, [&](const auto& other) { return other.isSameSlotAs(cookie); });
        const bool isRemoved = own != before.end() && own->expires > present && !holdsSlot(now, cookie);
        return isRemoved || (!cookie.isSessionOnly() && cookie.expires <= present);
    });
    for (const HTTPCookie& cookie : now) {
        if (std::ranges::find(before, cookie) != before.end())
            continue;
        std::erase_if(inFile, [&](const HTTPCookie& other) { return other.isSameSlotAs(cookie); });
        inFile.push_back(cookie);
    }
    return inFile;
}

} // namespace

CookieJar::CookieJar(const QString& path)
    : m_file(path)
    , m_writer({[this](bool) { work(); }, [this] { return m_file.isWaiting(); }, [this] { m_file.stopWaiting(); }})
{
    load();
}

void CookieJar::load()
{
    if (m_file.path().isEmpty())
        return;
    const std::optional<QByteArray> bytes = m_file.read();
    if (!bytes)
        return;
    const auto cookies = cookiesOfFile(*bytes);
    for (const HTTPCookie& cookie : cookies.value_or(std::vector<HTTPCookie>()))
        m_share.setCookie(cookie);
    m_saved = persistentCookies();
    m_isDamaged = !cookies;
    if (m_isDamaged)
        m_writer.ask();
}

/// What the file holds, as asked inside a rewrite. What cannot be understood is set aside and nothing.
std::optional<std::vector<HTTPCookie>> CookieJar::usableCookies(const std::optional<QByteArray>& present) const
{
    auto cookies = cookiesOfFile(present.value_or(QByteArray()));
    if (!cookies)
        m_file.setAside();
    return cookies;
}

std::vector<HTTPCookie> CookieJar::cookies() const
{
    return m_share.cookies();
}

std::vector<HTTPCookie> CookieJar::persistentCookies() const
{
    std::vector<HTTPCookie> cookies = m_share.cookies();
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    std::erase_if(cookies, [now](const HTTPCookie& cookie) { return cookie.isSessionOnly() || cookie.expires <= now; });
    return cookies;
}

void CookieJar::setCookie(const HTTPCookie& cookie)
{
    m_share.setCookie(cookie);
    saveChanges();
}

void CookieJar::deleteAllCookies()
{
    {
        const std::lock_guard lock(m_mutex);
        m_share.deleteAllCookies();
        m_saved.clear();
        m_mustEmptyFile = true;
        ++m_deletions;
    }
    m_writer.ask();
}

std::optional<Error> CookieJar::synchronize()
{
    const bool isTried = m_writer.finish();
    const std::lock_guard lock(m_mutex);
    if (!isTried) {
        m_failure = SharedFile::reasonWhenLocked();
        log(u"%@ could not be written yet: %@", m_file.path(), *m_failure);
    }
    if (!m_failure)
        return std::nullopt;
    return makeFileError(FileError::WriteUnknown, *m_failure);
}

/// On the writer's thread.
void CookieJar::work()
{
    if (m_file.path().isEmpty())
        return;
    store();
    if (!std::exchange(m_hasClearedAway, true))
        m_file.removeLeftovers();
}

void CookieJar::store()
{
    {
        const bool isAbsent = m_file.isAbsent();
        const std::lock_guard lock(m_mutex);
        m_mustEmptyFile &= !isAbsent;
        if (persistentCookies() == m_saved && !m_mustEmptyFile && !m_isDamaged) {
            m_failure.reset();
            return;
        }
    }
    std::vector<HTTPCookie> now;
    unsigned deletions = 0;
    const std::optional<QString> failure = m_file.rewrite(
        [&](const std::optional<QByteArray>& present) {
            const auto understood = usableCookies(present);
            const std::lock_guard lock(m_mutex);
            now = persistentCookies();
            deletions = m_deletions;
            return fileOfCookies(m_mustEmptyFile || !understood ? now : merged(*understood, m_saved, now));
        },
        PatienceWithOthers);

    const std::lock_guard lock(m_mutex);
    m_failure = failure;
    if (failure)
        return;
    m_isDamaged = false;
    // Cookies that were deleted while these were written are in the file again.
    if (deletions != m_deletions)
        return;
    m_saved = now;
    m_mustEmptyFile = false;
}

} // namespace tljira
