#include "platform/foundation/loading/curl/Authorities.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace tljira::Authorities {

namespace {

/// Of the line in front of a certificate, of whatever kind.
constexpr char pemTitle[] = "CERTIFICATE-----";
/// A list of all authorities of a system has a twentieth of that.
constexpr qint64 largestFile = 4 << 20;

// The authorities that OpenSSL's own variables name. libcurl's built-in places keep OpenSSL from looking at them.

QByteArray environmentFile()
{
    return qgetenv("SSL_CERT_FILE");
}

QByteArray environmentFolder()
{
    return qgetenv("SSL_CERT_DIR");
}

Error failure(const QString& text)
{
    return makeError(QLatin1String(URLErrorDomain), static_cast<qint64>(URLError::SecureConnectionFailed), text);
}

Error unusable(const QString& place)
{
    return failure(QStringLiteral("“%1” holds no certificates of authorities, or cannot be read.").arg(place));
}

/// Empty where there is no certificate in it.
QByteArray certificatesIn(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QFile::ReadOnly))
        return {};
    const QByteArray bytes = file.read(largestFile + 1);
    return bytes.size() <= largestFile && bytes.contains(pemTitle) ? bytes + '\n' : QByteArray();
}

QByteArray certificatesAt(const QString& place)
{
    if (!QFileInfo(place).isDir())
        return certificatesIn(place);
    QByteArray all;
    const QDir folder(place);
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name))
        all += certificatesIn(folder.filePath(name));
    return all;
}

/// The file that libcurl would read if nobody said anything else.
QString systemFile()
{
    const QByteArray chosen = environmentFile();
    const char* const builtIn = curl_version_info(CURLVERSION_NOW)->cainfo;
    return QString::fromLocal8Bit(chosen.isEmpty() ? QByteArray(builtIn) : chosen);
}

void useEnvironment(CURL* easy)
{
    if (const QByteArray file = environmentFile(); !file.isEmpty())
        curl_easy_setopt(easy, CURLOPT_CAINFO, file.constData());
    if (const QByteArray folder = environmentFolder(); !folder.isEmpty())
        curl_easy_setopt(easy, CURLOPT_CAPATH, folder.constData());
}

} // namespace

std::optional<Error> use(CURL* easy, const URLSessionConfiguration& configuration)
{
    if (configuration.trustsSystemAuthorities)
        useEnvironment(easy);
    else
        curl_easy_setopt(easy, CURLOPT_CAPATH, nullptr);
    if (configuration.authorities.isEmpty()) {
        if (configuration.trustsSystemAuthorities)
            return std::nullopt;
        return failure(QStringLiteral("No certificates of authorities are named in place of the system’s."));
    }

    QByteArray certificates = certificatesAt(configuration.authorities);
    if (certificates.isEmpty())
        return unusable(configuration.authorities);
    // In place of the file: libcurl takes one or the other.
    if (configuration.trustsSystemAuthorities)
        certificates += certificatesIn(systemFile());
    curl_blob blob = {certificates.data(), static_cast<std::size_t>(certificates.size()), CURL_BLOB_COPY};
    if (curl_easy_setopt(easy, CURLOPT_CAINFO_BLOB, &blob) != CURLE_OK)
        return makeURLError(URLError::ResourceUnavailable);
    return std::nullopt;
}

Error errorOf(const URLSessionConfiguration& configuration)
{
    if (!configuration.authorities.isEmpty())
        return unusable(configuration.authorities);
    if (environmentFile().isEmpty())
        return makeURLError(URLError::SecureConnectionFailed);
    return failure(QStringLiteral("The certificates in “%1”, which SSL_CERT_FILE names, cannot be read.")
                       .arg(QString::fromLocal8Bit(environmentFile())));
}

} // namespace tljira::Authorities
