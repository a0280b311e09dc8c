#include "platform/foundation/curl/CookieJar.h"

#include <QDateTime>

#include <algorithm>

namespace tljira {

namespace {

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

/// What other processes left in the file, with what this process added, replaced and removed since `before`.
std::vector<HTTPCookie> merged(std::vector<HTTPCookie> inFile, const std::vector<HTTPCookie>& before,
                               const std::vector<HTTPCookie>& now)
{
    std::erase_if(inFile,
                  [&](const HTTPCookie& cookie) { return holdsSlot(before, cookie) && !holdsSlot(now, cookie); });
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
{
    load();
}

void CookieJar::load()
{
    const std::optional<QByteArray> bytes = m_file.read();
    if (!bytes)
        return;
    auto cookies = cookiesOfFile(*bytes);
    if (!cookies)
        m_file.rewrite([&](const std::optional<QByteArray>& present) {
            cookies = usableCookies(present);
            return fileOfCookies(cookies.value_or(std::vector<HTTPCookie>()));
        });
    for (const HTTPCookie& cookie : cookies.value_or(std::vector<HTTPCookie>()))
        m_share.setCookie(cookie);
    m_saved = persistentCookies();
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

void CookieJar::saveChanges()
{
    const std::lock_guard lock(m_fileMutex);
    const std::vector<HTTPCookie> now = persistentCookies();
    if (now == m_saved && !m_mustEmptyFile)
        return;
    const bool isWritten = m_file.rewrite([&](const std::optional<QByteArray>& present) {
        const auto inFile = m_mustEmptyFile ? std::nullopt : usableCookies(present);
        return fileOfCookies(inFile ? merged(*inFile, m_saved, now) : now);
    });
    if (!isWritten)
        return;
    m_saved = now;
    m_mustEmptyFile = false;
}

void CookieJar::deleteAllCookies()
{
    const std::lock_guard lock(m_fileMutex);
    m_share.deleteAllCookies();
    m_saved.clear();
    m_mustEmptyFile = m_file.read() && !m_file.rewrite([](const auto&) { return QByteArray(fileHeader); });
}

} // namespace tljira
