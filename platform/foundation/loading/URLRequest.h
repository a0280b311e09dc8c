#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Data.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace tljira {

/// Kept with a request. No session of this library has a cache, so that both ask the server.
enum class URLRequestCachePolicy { UseProtocolCachePolicy = 0, ReloadIgnoringLocalCacheData = 1 };

/// What to ask of a server. A value: a task keeps the request as it was when the task was made.
class TL_EXPORT URLRequest
{
public:
    /// Name and value of a field.
    using Header = std::pair<QString, QString>;

    /// Nothing as address makes a request that fails with "unsupported URL".
    explicit URLRequest(std::optional<QString> url,
                        URLRequestCachePolicy cachePolicy = URLRequestCachePolicy::UseProtocolCachePolicy,
                        double timeoutInterval = 60.0);

    /// Joins the value to one that the field already has, with ",". Names compare without case; the first spelling
    /// stays.
    void addValue(const QString& value, const QString& field);
    /// Takes the place of the value that the field has. The first spelling of the name stays.
    void setValue(const QString& value, const QString& field);
    /// Nothing for a field that was not given. Names compare without case.
    std::optional<QString> valueForHTTPHeaderField(const QString& field) const;

    /// In the order in which the fields were first given.
    const std::vector<Header>& headers() const { return m_headers; }

    /// The full address, http or https.
    std::optional<QString> url;
    /// Sent as it stands, in upper case by custom.
    QString HTTPMethod = QStringLiteral("GET");
    /// What is sent behind the head; a file in it is read while it is sent.
    std::optional<Data> HTTPBody;
    /// See URLRequestCachePolicy.
    URLRequestCachePolicy cachePolicy;
    /// Seconds without a byte moved in either direction after which the task fails.
    double timeoutInterval;
    /// Whether the cookie storage takes part.
    bool HTTPShouldHandleCookies = true;

private:
    std::vector<Header> m_headers;
};

} // namespace tljira
