#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "tests/fuzz/Fuzz.h"

#include <QList>

#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

namespace {

using tljira::HTTPCookie;

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    fuzz::require(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size(), "the file can be written");
}

void requireThatLinesComeBack(const QByteArray& bytes)
{
    for (const QByteArray& line : bytes.split('\n')) {
        const auto cookie = HTTPCookie::fromNetscapeLine(line);
        if (!cookie)
            continue;
        const QByteArray written = cookie->netscapeLine();
        fuzz::require(!written.contains('\n'), "a cookie is one line");
        fuzz::require(HTTPCookie::fromNetscapeLine(written) == cookie, "a cookie can be written and read again");
    }
}

HTTPCookie ownCookie()
{
    HTTPCookie cookie;
    cookie.domain = QStringLiteral("own.example.test");
    cookie.path = QStringLiteral("/");
    cookie.expires = 4'000'000'000;
    cookie.name = QStringLiteral("own");
    cookie.value = QStringLiteral("value");
    return cookie;
}

bool holdsOwnCookie(const tljira::HTTPCookieStorage& jar)
{
    for (const HTTPCookie& cookie : jar.cookies()) {
        if (cookie == ownCookie())
            return true;
    }
    return false;
}

} // namespace

/// The file of a cookie jar.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder;
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    const QByteArray bytes = fuzz::bytesOf(data, size);
    requireThatLinesComeBack(bytes);

    const QString path = folder.filePath(QStringLiteral("cookies.txt"));
    write(path, bytes);
    {
        tljira::HTTPCookieStorage jar(path);
        jar.setCookie(ownCookie());
        fuzz::require(!jar.synchronize(), "whatever the file holds, the jar can be written");
    }
    fuzz::require(holdsOwnCookie(tljira::HTTPCookieStorage(path)), "the next jar finds the cookie");
    QFile::remove(path);
    return 0;
}
