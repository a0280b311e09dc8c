#include "client/SessionRequest.h"

#include "client/TokenSignIn.h"
#include "records/JALoginObject.h"
#include "records/TLJiraOptions.h"

namespace client {

namespace {

constexpr double timeoutSeconds = 60.0;

tljira::URLRequest plainRequest(const QString& method, const std::optional<QString>& url)
{
    tljira::URLRequest request(url, tljira::URLRequestCachePolicy::UseProtocolCachePolicy, timeoutSeconds);
    request.HTTPMethod = method;
    return request;
}

void authorize(tljira::URLRequest& request, const std::optional<QString>& authorization)
{
    // Not even cookies that the server sets: one could stand for somebody else than the token.
    request.HTTPShouldHandleCookies = false;
    if (authorization)
        request.addValue(*authorization, QStringLiteral("Authorization"));
}

tljira::URLRequest withJSON(tljira::URLRequest request)
{
    request.addValue(QStringLiteral("application/json"), QStringLiteral("Content-Type"));
    request.addValue(QStringLiteral("application/json"), QStringLiteral("Accept"));
    return request;
}

} // namespace

tljira::URLRequest sessionRequest(const QString& method, const std::optional<QString>& url)
{
    tljira::URLRequest request = plainRequest(method, url);
    if (TLJiraOptions::inUse().signIn == TLJiraOptions::SignIn::Token)
        authorize(request, authorizationFor(url));
    else if (const auto cookie = JALoginObject::restoreSession())
        request.addValue(*cookie, QStringLiteral("cookie"));
    return request;
}

tljira::URLRequest jsonRequest(const QString& method, const std::optional<QString>& url)
{
    return withJSON(sessionRequest(method, url));
}

tljira::URLRequest tokenRequest(const records::SavedToken& token, const std::optional<QString>& url)
{
    tljira::URLRequest request = plainRequest(QStringLiteral("GET"), url);
    authorize(request, token.origin.isEmpty() ? std::nullopt : std::optional(authorizationOf(token)));
    return withJSON(request);
}

} // namespace client
