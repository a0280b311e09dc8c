#include "client/SessionRequest.h"

#include "records/JALoginObject.h"

namespace client {

namespace {

constexpr double timeoutSeconds = 60.0;

} // namespace

tljira::URLRequest sessionRequest(const QString& method, const std::optional<QString>& url)
{
    tljira::URLRequest request(url, tljira::URLRequestCachePolicy::UseProtocolCachePolicy, timeoutSeconds);
    if (const auto cookie = JALoginObject::restoreSession())
        request.addValue(*cookie, QStringLiteral("cookie"));
    request.HTTPMethod = method;
    return request;
}

} // namespace client
