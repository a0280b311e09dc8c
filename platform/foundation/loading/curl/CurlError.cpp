#include "platform/foundation/loading/curl/CurlError.h"

#include <cerrno>

namespace tljira {

namespace {

bool isOffline(long systemError)
{
    return systemError == ENETUNREACH || systemError == ENETDOWN;
}

URLError codeOf(CURLcode code, long systemError)
{
    switch (code) {
    case CURLE_URL_MALFORMAT:
        return URLError::BadURL;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return URLError::CannotFindHost;
    case CURLE_COULDNT_CONNECT:
        return isOffline(systemError) ? URLError::NotConnectedToInternet : URLError::CannotConnectToHost;
    case CURLE_OPERATION_TIMEDOUT:
        return URLError::TimedOut;
    case CURLE_TOO_MANY_REDIRECTS:
        return URLError::HTTPTooManyRedirects;
    case CURLE_ABORTED_BY_CALLBACK:
        return URLError::Cancelled;
    case CURLE_BAD_CONTENT_ENCODING:
        return URLError::CannotDecodeContentData;
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_UNSUPPORTED_PROTOCOL: // an answer without a head: addresses of other schemes never get here
        return URLError::CannotParseResponse;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
        return URLError::ServerCertificateUntrusted;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ENGINE_NOTFOUND:
    case CURLE_SSL_ENGINE_SETFAILED:
    case CURLE_SSL_ENGINE_INITFAILED:
    case CURLE_SSL_CRL_BADFILE:
    case CURLE_SSL_SHUTDOWN_FAILED:
        return URLError::SecureConnectionFailed;
    default:
        return URLError::NetworkConnectionLost;
    }
}

} // namespace

Error errorOfCurl(CURLcode code, long systemError, const QString& host)
{
    return makeURLError(codeOf(code, systemError), host);
}

} // namespace tljira
