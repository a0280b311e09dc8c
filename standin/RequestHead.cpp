#include "standin/RequestHead.h"

#include "standin/Text.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>

#include <limits>

namespace standin {

namespace {

namespace http = boost::beast::http;

std::string textOf(boost::beast::string_view view)
{
    return {view.data(), view.size()};
}

} // namespace

std::optional<RequestHead> RequestHead::parse(std::string bytes)
{
    http::request_parser<http::empty_body> parser;
    parser.header_limit(std::numeric_limits<std::uint32_t>::max());
    parser.body_limit(std::numeric_limits<std::uint64_t>::max());
    boost::system::error_code error;
    const std::size_t used = parser.put(boost::asio::buffer(bytes), error);
    if (error || used != bytes.size() || !parser.is_header_done() || !parser.get().target().starts_with('/'))
        return std::nullopt;

    RequestHead head;
    head.m_bytes = std::move(bytes);
    head.m_method = textOf(parser.get().method_string());
    head.m_target = textOf(parser.get().target());
    const auto question = head.m_target.find('?');
    head.m_path = head.m_target.substr(0, question);
    if (question != std::string::npos)
        head.m_query = head.m_target.substr(question + 1);
    head.m_contentLength = static_cast<std::int64_t>(parser.content_length().value_or(0));
    head.m_isChunked = parser.chunked();
    head.m_keepsConnection = parser.keep_alive();
    head.m_headers = std::move(parser.release().base());
    return head;
}

bool RequestHead::has(std::string_view name) const
{
    return !headers(name).empty();
}

std::string RequestHead::header(std::string_view name) const
{
    std::string joined;
    for (const auto& value : headers(name))
        joined += (joined.empty() ? "" : ", ") + value;
    return joined;
}

std::vector<std::string> RequestHead::headers(std::string_view name) const
{
    std::vector<std::string> values;
    const auto range = m_headers.equal_range({name.data(), name.size()});
    for (auto field = range.first; field != range.second; ++field)
        values.push_back(textOf(field->value()));
    return values;
}

bool RequestHead::expectsContinue() const
{
    return equalsIgnoringCase(header("Expect"), "100-continue");
}

} // namespace standin
