#include "client/Answer.h"

#include "client/JAController.h"
#include "platform/foundation/Secrets.h"

namespace client {

Answer Answer::from(const std::optional<QByteArray>& body, const std::optional<tljira::Error>& transportError,
                    const std::optional<tljira::HTTPURLResponse>& response)
{
    if (transportError || !body)
        return {Kind::Missing, std::nullopt, transportError};
    const std::optional<QJsonValue> json = JAController::jsonSerialization(body);
    const qint64 status = statusOf(response);
    if (status == 200)
        return {Kind::Accepted, json, std::nullopt};
    return {Kind::Refused, json, unexpectedStatus(status, json)};
}

qint64 statusOf(const std::optional<tljira::HTTPURLResponse>& response)
{
    return response ? response->statusCode : 0;
}

tljira::Error unexpectedStatus(qint64 status, const std::optional<QJsonValue>& json)
{
    const auto shown = json ? std::optional(tljira::withoutTokens(*json)) : std::nullopt;
    return {QString::fromLatin1(JAController::invalidSessionDomain), status, shown};
}

} // namespace client
