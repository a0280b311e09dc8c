#include "platform/foundation/loading/URLRequest.h"

#include <algorithm>

namespace tljira {

namespace {

template <typename Headers>
auto findHeader(Headers& headers, const QString& field)
{
    return std::find_if(headers.begin(), headers.end(),
                        [&](const auto& header) { return header.first.compare(field, Qt::CaseInsensitive) == 0; });
}

} // namespace

URLRequest::URLRequest(std::optional<QString> address, URLRequestCachePolicy policy, double timeout)
    : url(std::move(address))
    , cachePolicy(policy)
    , timeoutInterval(timeout)
{
}

void URLRequest::addValue(const QString& value, const QString& field)
{
    if (const auto present = findHeader(m_headers, field); present != m_headers.end())
        present->second += u',' + value;
    else
        m_headers.emplace_back(field, value);
}

void URLRequest::setValue(const QString& value, const QString& field)
{
    if (const auto present = findHeader(m_headers, field); present != m_headers.end())
        present->second = value;
    else
        m_headers.emplace_back(field, value);
}

std::optional<QString> URLRequest::valueForHTTPHeaderField(const QString& field) const
{
    const auto present = findHeader(m_headers, field);
    return present == m_headers.end() ? std::nullopt : std::optional(present->second);
}

} // namespace tljira
