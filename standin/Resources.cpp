#include "standin/Avatar.h"
#include "standin/Call.h"
#include "standin/JiraJson.h"
#include "standin/MediaHost.h"
#include "standin/SignIn.h"
#include "standin/Text.h"
#include "standin/UploadCall.h"

#include <QJsonDocument>

#include <charconv>

namespace standin {

namespace {

constexpr const char* loginPage = "<!DOCTYPE html>\n<html><head><title>Log in - Jira</title></head><body>"
                                  "<form action=\"login.jsp\" method=\"post\"><input name=\"os_username\">"
                                  "<input name=\"os_password\" type=\"password\"></form></body></html>\n";

constexpr const char* sessionPath = "/rest/auth/1/session";
constexpr std::string_view issuePath = "/rest/api/2/issue/";
constexpr std::string_view filePath = "/secure/attachment/";
constexpr std::string_view contentPath = "/rest/api/2/attachment/content/";

Response captchaDenied(Response response, const std::string& base)
{
    const auto loginUrl = base + "/login.jsp";
    return std::move(response)
        .with("X-Authentication-Denied-Reason", "CAPTCHA_CHALLENGE; login-url=" + loginUrl)
        .with("X-Seraph-LoginReason", "AUTHENTICATION_DENIED");
}

Response logIn(const Request& request, const std::string& body, Jira& jira, const Options& options)
{
    const auto contentType = request.head.header("Content-Type");
    if (!equalsIgnoringCase(trimmed(std::string_view(contentType).substr(0, contentType.find(';'))),
                            "application/json"))
        return Response::error(415, "Unsupported Media Type");
    const auto document = QJsonDocument::fromJson(QByteArray::fromStdString(body));
    if (!document.isObject())
        return Response::error(400, "The request body is no JSON object");
    const auto member = [&document](const char* name) {
        return document.object().value(QLatin1String(name)).toString().toStdString();
    };
    if (options.isCloud)
        return Response::error(401, "Passwords are not accepted here. Use an API token.");
    const auto outcome = jira.login(member("username"), member("password"));
    if (outcome.kind == LoginOutcome::Kind::wrongPassword)
        return Response::error(401, "Login failed");
    if (outcome.kind == LoginOutcome::Kind::captchaRequired)
        return captchaDenied(Response::error(403, "Login denied"), request.base);
    const QJsonObject session{{QStringLiteral("name"), QStringLiteral("JSESSIONID")},
                              {QStringLiteral("value"), QString::fromStdString(outcome.session)}};
    const QJsonObject answer{{QStringLiteral("session"), session},
                             {QStringLiteral("loginInfo"), loginInfoJson(outcome.history, options)}};
    const std::string path = request.folder.empty() ? "/" : request.folder;
    return Response::json(200, answer)
        .with("Set-Cookie", "JSESSIONID=" + outcome.session + "; Path=" + path + "; HttpOnly")
        .with("Set-Cookie", "atlassian.xsrf.token=TEST-" + outcome.session.substr(0, 12) + "_lin; Path=" + path);
}

Response showSession(const Request& request, const UserState& user, const Options& options)
{
    const auto self = request.base + "/rest/api/latest/user?username=" + percentEncoded(user.user.name);
    return Response::json(200, QJsonObject{{QStringLiteral("self"), QString::fromStdString(self)},
                                           {QStringLiteral("name"), QString::fromStdString(user.user.name)},
                                           {QStringLiteral("loginInfo"), loginInfoJson(user.history, options)}});
}

Response showIssue(const Request& request, const std::string& key, const Jira& jira, const Options& options)
{
    const auto issue = jira.issue(key);
    if (!issue)
        return Response::error(404, "Issue Does Not Exist");
    if (issue->hiddenStatus != 0)
        return Response::error(issue->hiddenStatus, "You do not have the permission to see the specified issue.");
    return Response::json(200, issueJson(*issue, request.base, options));
}

/// `rest` is ID/NAME or, where the name does not stand in the address, ID.
std::optional<AttachmentState> attachmentOf(std::string_view rest, bool hasName, const Jira& jira)
{
    std::int64_t id = 0;
    const auto* const end = rest.data() + rest.size();
    const auto parsed = std::from_chars(rest.data(), end, id);
    const bool isNumber =
        parsed.ec == std::errc() && (hasName ? parsed.ptr != end && *parsed.ptr == '/' : parsed.ptr == end);
    return isNumber ? jira.attachment(id) : std::nullopt;
}

Response showFile(const std::optional<AttachmentState>& attachment, Jira& jira, const Options& options)
{
    if (!attachment || !attachment->content)
        return Response::html(404, "<html><body>This attachment is not here.</body></html>\n");
    if (!options.contentsBase.empty())
        return sendToMedia(*attachment, jira, options);
    Response response =
        Response::empty(200)
            .with("Content-Type", attachment->record.mimeType)
            .with("Content-Disposition", "attachment; filename*=UTF-8''" + percentEncoded(attachment->record.fileName));
    response.body = attachment->content;
    return response;
}

Response fileWithoutSession(const Request& request, const Options& options)
{
    if (options.loginPageForFiles)
        return Response::html(200, loginPage);
    return Response::empty(302).with("Location", request.base + "/login.jsp?permissionViolation=true&os_destination=" +
                                                     percentEncoded(request.path));
}

Response showAvatar(const Request& request)
{
    const auto has = [&request](const char* size) {
        return request.head.query().find(std::string("size=") + size) != std::string::npos;
    };
    const int size = has("xsmall") ? 16 : has("small") ? 24 : has("medium") ? 32 : 48;
    return Response::bytes(200, avatarPng(size), "image/png");
}

Response methodNotAllowed()
{
    return Response::error(405, "Method Not Allowed");
}

std::unique_ptr<Call> sessionCall(Request request, Jira& jira, const Options& options)
{
    const auto& method = request.head.method();
    if (method == "POST") {
        return std::make_unique<SmallCall>([request = std::move(request), &jira, &options](const std::string& body) {
            return logIn(request, body, jira, options);
        });
    }
    const auto user = request.user ? jira.user(*request.user) : std::nullopt;
    if (!user)
        return fixedCall(unauthorised(request, options));
    if (method == "DELETE") {
        for (const auto& session : request.cookies)
            jira.closeSession(session);
        return fixedCall(Response::empty(204));
    }
    return fixedCall(method == "GET" ? showSession(request, *user, options) : methodNotAllowed());
}

std::unique_ptr<Call> issueCall(Request request, Jira& jira, const Options& options)
{
    constexpr std::string_view attachments = "/attachments";
    auto key = std::string_view(request.path).substr(issuePath.size());
    const auto& method = request.head.method();
    if (key.ends_with(attachments) && method == "POST") {
        key.remove_suffix(attachments.size());
        const auto issueKey = percentDecoded(key);
        return std::make_unique<UploadCall>(std::move(request), issueKey, jira, options);
    }
    if (method != "GET" && method != "HEAD")
        return fixedCall(methodNotAllowed());
    return fixedCall(showIssue(request, percentDecoded(key), jira, options));
}

std::unique_ptr<Call> restCall(Request request, Jira& jira, const Options& options)
{
    if (request.path == sessionPath)
        return sessionCall(std::move(request), jira, options);
    const bool isIssue = request.path.starts_with(issuePath);
    const bool isContent = options.isCloud && request.path.starts_with(contentPath);
    if (request.path != "/rest/api/2/myself" && !isIssue && !isContent)
        return fixedCall(Response::error(404, "null for uri: " + request.base + request.path));
    const auto user = request.user ? jira.user(*request.user) : std::nullopt;
    if (!user)
        return fixedCall(unauthorised(request, options));
    if (user->needsCaptcha) {
        auto page = Response::html(403, "<html><body>Basic Authentication Failure - Reason : AUTHENTICATION_DENIED"
                                        "</body></html>\n");
        return fixedCall(captchaDenied(std::move(page), request.base));
    }
    if (isIssue)
        return issueCall(std::move(request), jira, options);
    if (isContent) {
        const auto rest = std::string_view(request.path).substr(contentPath.size());
        return fixedCall(showFile(attachmentOf(rest, false, jira), jira, options));
    }
    auto own = Response::json(200, ownUserJson(user->user, request.base, options));
    if (const auto cookie = cookieForToken(request, jira, options))
        own.headers.emplace_back("Set-Cookie", *cookie);
    return fixedCall(std::move(own));
}

std::vector<std::string> sessionCookies(const RequestHead& head)
{
    std::vector<std::string> values;
    constexpr std::string_view name = "JSESSIONID=";
    for (const auto& line : head.headers("Cookie")) {
        for (const auto pair : split(line, ';')) {
            if (trimmed(pair).starts_with(name))
                values.emplace_back(trimmed(pair).substr(name.size()));
        }
    }
    return values;
}

std::string baseOf(const RequestHead& head, const std::string& scheme, const Options& options)
{
    auto base = options.baseUrl.empty() ? scheme + "://" + head.header("Host") + options.contextPath : options.baseUrl;
    while (base.ends_with('/'))
        base.pop_back();
    return base;
}

/// The path of a base URL: what follows the host.
std::string_view folderOf(std::string_view base)
{
    const auto host = base.find("://");
    const auto slash = base.find('/', host == std::string_view::npos ? 0 : host + 3);
    return slash == std::string_view::npos ? std::string_view() : base.substr(slash);
}

} // namespace

std::unique_ptr<Call> openCall(RequestHead head, const std::string& scheme, Jira& jira, const Options& options)
{
    if (isForMedia(head, options))
        return fixedCall(showMedia(head, jira));
    Request request{.head = std::move(head), .base = {}, .folder = {}, .path = {}, .cookies = {}, .user = {}};
    request.base = baseOf(request.head, scheme, options);
    request.cookies = sessionCookies(request.head);
    request.user = userOf(request.head, request.cookies, jira, options);
    request.folder = folderOf(request.base);
    if (request.head.path().starts_with(request.folder))
        request.path = request.head.path().substr(request.folder.size());

    if (request.path.starts_with("/rest/"))
        return restCall(std::move(request), jira, options);
    if (request.path.starts_with(filePath)) {
        const auto rest = std::string_view(request.path).substr(filePath.size());
        return fixedCall(request.user ? showFile(attachmentOf(rest, true, jira), jira, options)
                                      : fileWithoutSession(request, options));
    }
    if (request.path == "/secure/useravatar")
        return fixedCall(showAvatar(request));
    if (request.path == "/login.jsp")
        return fixedCall(Response::html(200, loginPage));
    return fixedCall(Response::error(404, "null for uri: " + request.base + request.path));
}

} // namespace standin
