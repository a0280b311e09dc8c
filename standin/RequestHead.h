#pragma once

#include <boost/beast/http/fields.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace standin {

/// The request line and the headers of one HTTP/1.x request.
class RequestHead
{
public:
    /// `bytes` reach up to and include the empty line. nullopt when they are no request.
    static std::optional<RequestHead> parse(std::string bytes);

    const std::string& bytes() const { return m_bytes; }
    const std::string& method() const { return m_method; }
    const std::string& target() const { return m_target; }
    /// The target up to the query, as sent.
    const std::string& path() const { return m_path; }
    const std::string& query() const { return m_query; }

    bool has(std::string_view name) const;
    /// Several headers of one name are joined by ", ".
    std::string header(std::string_view name) const;
    std::vector<std::string> headers(std::string_view name) const;

    std::int64_t contentLength() const { return m_contentLength; }
    bool isChunked() const { return m_isChunked; }
    bool keepsConnection() const { return m_keepsConnection; }
    bool expectsContinue() const;

private:
    std::string m_bytes;
    std::string m_method;
    std::string m_target;
    std::string m_path;
    std::string m_query;
    boost::beast::http::fields m_headers;
    std::int64_t m_contentLength = 0;
    bool m_isChunked = false;
    bool m_keepsConnection = true;
};

} // namespace standin
