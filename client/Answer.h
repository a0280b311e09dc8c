#pragma once

#include "platform/foundation/loading/HTTPURLResponse.h"
#include "platform/foundation/values/Error.h"

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>

#include <optional>

namespace client {

/// What the server made of a request for a record.
struct Answer
{
    enum class Kind { Missing, Accepted, Refused };

    /// Status 200 alone is acceptance.
    static Answer from(const std::optional<QByteArray>& body, const std::optional<tljira::Error>& transportError,
                       const std::optional<tljira::HTTPURLResponse>& response);

    /// The answer's object, an empty one for JSON of another type and for what is no JSON.
    QJsonObject dictionary() const { return json.value_or(QJsonValue()).toObject(); }

    Kind kind = Kind::Missing;
    std::optional<QJsonValue> json;
    /// For what was not accepted. The transport's own where no answer came; that may be nothing, when an answer came
    /// without a body.
    std::optional<tljira::Error> error;
};

/// Status of an answer, 0 when there is none.
qint64 statusOf(const std::optional<tljira::HTTPURLResponse>& response);

/// The error for an answer with a status that means no success. A token that the server repeats is not in it.
tljira::Error unexpectedStatus(qint64 status, const std::optional<QJsonValue>& json);

} // namespace client
