#include "standin/SignIn.h"

#include "standin/Text.h"

#include <QByteArray>

namespace standin {

namespace {

/// What follows the scheme, whose case does not count; nothing for another scheme.
std::optional<std::string> credentials(const std::string& authorization, std::string_view scheme)
{
    const auto blank = authorization.find(' ');
    if (blank == std::string::npos || !equalsIgnoringCase(authorization.substr(0, blank), scheme))
        return std::nullopt;
    return std::string(trimmed(std::string_view(authorization).substr(blank)));
}

std::optional<std::string> userOfPair(const std::string& base64, const Jira& jira, const Options& options)
{
    const auto decoded =
        QByteArray::fromBase64Encoding(QByteArray::fromStdString(base64), QByteArray::AbortOnBase64DecodingErrors);
    const std::string pair = decoded ? (*decoded).toStdString() : std::string();
    const auto colon = pair.find(':');
    if (colon == std::string::npos)
        return std::nullopt;
    const std::string name = pair.substr(0, colon);
    const std::string secret = pair.substr(colon + 1);
    const auto user = jira.userOfApiToken(name, secret, options.isCloud);
    return user ? user : options.isCloud ? std::nullopt : jira.userOfPassword(name, secret);
}

} // namespace

std::optional<std::string> userOf(const RequestHead& head, const std::vector<std::string>& cookies, const Jira& jira,
                                  const Options& options)
{
    if (!head.has("Authorization"))
        return options.isCloud ? std::nullopt : jira.userOfSession(cookies);
    const std::string authorization = head.header("Authorization");
    if (const auto pair = credentials(authorization, "Basic"))
        return userOfPair(*pair, jira, options);
    const auto token = credentials(authorization, "Bearer");
    return token && !options.isCloud ? jira.userOfAccessToken(*token) : std::nullopt;
}

Response unauthorised(const Request& request, const Options& options)
{
    const std::string message = "You are not authenticated. Authentication required to perform this operation.";
    const bool isByToken = request.head.has("Authorization");
    if (options.isCloud && isByToken && credentials(request.head.header("Authorization"), "Bearer"))
        return Response::json(
            403, QJsonObject{{QStringLiteral("error"), QStringLiteral("Failed to parse Connect Session Auth Token")}});
    if (options.isCloud)
        return Response::text(401, "Client must be authenticated to access this resource.");
    if (isByToken)
        return Response::error(401, message).with("X-Seraph-LoginReason", "AUTHENTICATED_FAILED");
    if (options.htmlWhenStale && !request.cookies.empty())
        return Response::html(401, "<html><head><title>Unauthorized (401)</title></head><body>" + message +
                                       "</body></html>\n");
    return Response::error(401, message);
}

std::optional<std::string> cookieForToken(const Request& request, Jira& jira, const Options& options)
{
    if (!request.user || !request.head.has("Authorization"))
        return std::nullopt;
    const std::string path = request.folder.empty() ? "/" : request.folder;
    if (options.isCloud)
        return "atlassian.xsrf.token=cloud_lin; Path=" + path + "; Secure";
    return "JSESSIONID=" + jira.openSession(*request.user) + "; Path=" + path + "; HttpOnly";
}

} // namespace standin
