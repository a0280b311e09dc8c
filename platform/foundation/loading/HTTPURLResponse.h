#pragma once

#include "platform/foundation/Export.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace tljira {

/// The head of a server's answer.
struct TL_EXPORT HTTPURLResponse
{
    /// The address that answered, after redirects.
    QString url;
    /// As the server sent it, 200 for instance.
    int statusCode = 0;
    /// In the order of the answer.
    std::vector<std::pair<QString, QString>> headers;
    /// Bytes that the body will have; -1 when the answer does not say.
    qint64 expectedContentLength = -1;

    /// The field's value; several fields of the name come joined by ", ". Names compare without case.
    std::optional<QString> valueForHTTPHeaderField(const QString& field) const;
};

/// One line for the log: address, status and headers.
TL_EXPORT QString describe(const HTTPURLResponse& response);

} // namespace tljira
