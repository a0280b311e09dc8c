#include "platform/foundation/loading/curl/Proxy.h"

#include "platform/foundation/Secrets.h"

#include <QUrl>

namespace tljira {

namespace {

constexpr long proxyAuthenticationRequired = 407;

Error error(URLError code, const QString& text)
{
    return makeError(QLatin1String(URLErrorDomain), static_cast<qint64>(code), text);
}

bool isNoPart(const QUrl& url)
{
    return (!url.path().isEmpty() && url.path() != u"/") || url.hasQuery() || url.hasFragment();
}

} // namespace

Proxy::Proxy(const std::optional<QString>& address)
    : m_address(address)
{
    const QString password = m_address ? QUrl(*m_address).password(QUrl::FullyDecoded) : QString();
    if (password.isEmpty())
        return;
    const QString pair = QUrl(*m_address).userName(QUrl::FullyDecoded) + u':' + password;
    hide(SecretKind::Token, password);
    hide(SecretKind::Token, QString::fromLatin1(pair.toUtf8().toBase64()));
}

std::optional<Error> Proxy::problem() const
{
    if (!m_address || m_address->isEmpty())
        return std::nullopt;
    const QUrl url(*m_address, QUrl::StrictMode);
    const QString scheme = url.scheme();
    if (!url.isValid() || url.host().isEmpty() || url.port() < 1 || isNoPart(url) ||
        (scheme != u"http" && scheme != u"socks5" && scheme != u"socks5h"))
        return error(URLError::BadURL,
                     QStringLiteral("“%1” is no address of a proxy: http://HOST:PORT, socks5://HOST:PORT or "
                                    "socks5h://HOST:PORT.")
                         .arg(name()));
    return std::nullopt;
}

void Proxy::use(CURL* easy) const
{
    // Their heads are no part of an answer.
    curl_easy_setopt(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    if (!m_address)
        return;
    curl_easy_setopt(easy, CURLOPT_PROXY, m_address->toUtf8().constData());
    curl_easy_setopt(easy, CURLOPT_NOPROXY, "");
}

std::optional<Error> Proxy::errorOf(CURLcode code, CURL* easy) const
{
    if (!m_address || m_address->isEmpty())
        return std::nullopt;
    long connectStatus = 0;
    long status = 0;
    curl_easy_getinfo(easy, CURLINFO_HTTP_CONNECTCODE, &connectStatus);
    curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
    switch (code) {
    case CURLE_OK:
        // Only a proxy says so.
        return status == proxyAuthenticationRequired ? errorOfStatus(status) : std::nullopt;
    case CURLE_COULDNT_RESOLVE_PROXY:
        return error(URLError::CannotFindHost, QStringLiteral("The proxy “%1” could not be found.").arg(name()));
    case CURLE_COULDNT_CONNECT:
        return error(URLError::CannotConnectToHost, QStringLiteral("Could not connect to the proxy “%1”.").arg(name()));
    case CURLE_PROXY:
        return error(URLError::CannotConnectToHost,
                     QStringLiteral("The proxy “%1” does not connect to the server.").arg(name()));
    default:
        return connectStatus >= 300 ? errorOfStatus(connectStatus) : std::nullopt;
    }
}

std::optional<Error> Proxy::errorOfStatus(long status) const
{
    if (status == proxyAuthenticationRequired)
        return error(URLError::CannotConnectToHost,
                     QStringLiteral("The proxy “%1” wants a user and a password, or other ones.").arg(name()));
    return error(URLError::CannotConnectToHost,
                 QStringLiteral("The proxy “%1” answers with status %2.").arg(name()).arg(status));
}

QString Proxy::name() const
{
    const QString address = m_address.value_or(QString());
    const qsizetype scheme = address.indexOf(QLatin1String("://"));
    const qsizetype start = scheme < 0 ? 0 : scheme + 3;
    return address.left(start) + address.mid(std::max(start, address.lastIndexOf(u'@') + 1));
}

} // namespace tljira
