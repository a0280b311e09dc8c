#include "platform/foundation/loading/HTTPURLResponse.h"

#include "platform/foundation/values/Format.h"

namespace tljira {

std::optional<QString> HTTPURLResponse::valueForHTTPHeaderField(const QString& field) const
{
    std::optional<QString> joined;
    for (const auto& [name, value] : headers) {
        if (name.compare(field, Qt::CaseInsensitive) == 0)
            joined = joined ? *joined + QLatin1String(", ") + value : value;
    }
    return joined;
}

QString describe(const HTTPURLResponse& response)
{
    QJsonObject headers;
    QStringList seen;
    for (const auto& [name, value] : response.headers) {
        if (seen.contains(name, Qt::CaseInsensitive))
            continue;
        seen << name;
        headers.insert(name, response.valueForHTTPHeaderField(name).value_or(value));
    }
    return format(QStringLiteral("{ URL: %@ } { Status Code: %d, Headers %@ }"), response.url, response.statusCode,
                  headers);
}

} // namespace tljira
