#pragma once

#include "platform/foundation/Data.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace platform {

enum class URLRequestCachePolicy { UseProtocolCachePolicy = 0, ReloadIgnoringLocalCacheData = 1 };

/// What to ask of a server. A value: a task keeps the request as it was when the task was made.
class TL_EXPORT URLRequest
{
public:
    using Header = std::pair<QString, QString>;

    /// Nothing as address makes a request that fails with "unsupported URL".
    explicit URLRequest(std::optional<QString> url,
                        URLRequestCachePolicy cachePolicy = URLRequestCachePolicy::UseProtocolCachePolicy,
                        double timeoutInterval = 60.0);

    /// Joins the value to one that the field already has, with ",". Names compare without case; the first spelling
    /// stays.
    void addValue(const QString& value, const QString& field);
    void setValue(const QString& value, const QString& field);
    std::optional<QString> valueForHTTPHeaderField(const QString& field) const;

    /// In the order in which the fields were first given.
    const std::vector<Header>& headers() const { return m_headers; }

    std::optional<QString> url;
    QString HTTPMethod = QStringLiteral("GET");
    std::optional<Data> HTTPBody;
    URLRequestCachePolicy cachePolicy;
    /// Seconds without a byte moved in either direction after which the task fails.
    double timeoutInterval;
    /// Whether the cookie storage takes part.
    bool HTTPShouldHandleCookies = true;

private:
    std::vector<Header> m_headers;
};

} // namespace platform
