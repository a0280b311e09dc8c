#include "standin/Response.h"

#include <QJsonDocument>

namespace standin {

namespace {

Response jsonResponse(int status, const QJsonDocument& document)
{
    return Response::bytes(status, document.toJson(QJsonDocument::Compact).toStdString(),
                           "application/json;charset=UTF-8");
}

} // namespace

Response Response::empty(int status)
{
    Response response;
    response.status = status;
    return response;
}

Response Response::bytes(int status, std::string body, std::string contentType)
{
    Response response = empty(status);
    response.body = contentOfBytes(std::move(body));
    response.headers.emplace_back("Content-Type", std::move(contentType));
    return response;
}

Response Response::text(int status, std::string body)
{
    return bytes(status, std::move(body), "text/plain;charset=UTF-8");
}

Response Response::html(int status, std::string body)
{
    return bytes(status, std::move(body), "text/html;charset=UTF-8");
}

Response Response::json(int status, const QJsonObject& object)
{
    return jsonResponse(status, QJsonDocument(object));
}

Response Response::json(int status, const QJsonArray& array)
{
    return jsonResponse(status, QJsonDocument(array));
}

Response Response::error(int status, const std::string& message)
{
    return json(status, QJsonObject{{QStringLiteral("errorMessages"), QJsonArray{QString::fromStdString(message)}},
                                    {QStringLiteral("errors"), QJsonObject()}});
}

Response&& Response::with(std::string name, std::string value) &&
{
    headers.emplace_back(std::move(name), std::move(value));
    return std::move(*this);
}

std::string reasonPhrase(int status)
{
    static const std::pair<int, const char*> phrases[] = {
        {100, "Continue"},
        {200, "OK"},
        {201, "Created"},
        {204, "No Content"},
        {301, "Moved Permanently"},
        {302, "Found"},
        {303, "See Other"},
        {304, "Not Modified"},
        {307, "Temporary Redirect"},
        {308, "Permanent Redirect"},
        {400, "Bad Request"},
        {401, "Unauthorized"},
        {403, "Forbidden"},
        {404, "Not Found"},
        {405, "Method Not Allowed"},
        {413, "Request Entity Too Large"},
        {415, "Unsupported Media Type"},
        {429, "Too Many Requests"},
        {500, "Internal Server Error"},
        {502, "Bad Gateway"},
        {503, "Service Unavailable"},
        {504, "Gateway Timeout"},
    };
    for (const auto& [code, phrase] : phrases) {
        if (code == status)
            return phrase;
    }
    return "Status";
}

} // namespace standin
