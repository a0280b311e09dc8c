#include "standin/RequestHead.h"

#include "standin/Text.h"

#include <charconv>

namespace standin {

std::optional<RequestHead> RequestHead::parse(std::string bytes)
{
    RequestHead head;
    head.m_bytes = std::move(bytes);
    std::string_view rest = head.m_bytes;
    bool isFirst = true;
    for (;;) {
        const auto end = rest.find("\r\n");
        if (end == std::string_view::npos)
            return std::nullopt;
        const auto line = rest.substr(0, end);
        rest.remove_prefix(end + 2);
        if (line.empty())
            break;
        if (!(isFirst ? head.parseRequestLine(line) : head.parseHeader(line)))
            return std::nullopt;
        isFirst = false;
    }
    if (isFirst || !head.parseContentLength())
        return std::nullopt;
    return head;
}

bool RequestHead::parseRequestLine(std::string_view line)
{
    const auto words = split(line, ' ');
    if (words.size() != 3 || words[0].empty() || !words[1].starts_with('/') || !words[2].starts_with("HTTP/1."))
        return false;
    m_method = words[0];
    m_target = words[1];
    m_isOldVersion = words[2] == "HTTP/1.0";
    const auto question = m_target.find('?');
    m_path = m_target.substr(0, question);
    if (question != std::string::npos)
        m_query = m_target.substr(question + 1);
    return true;
}

bool RequestHead::parseHeader(std::string_view line)
{
    const auto colon = line.find(':');
    if (colon == std::string_view::npos || colon == 0)
        return false;
    m_headers.emplace_back(line.substr(0, colon), trimmed(line.substr(colon + 1)));
    return true;
}

bool RequestHead::parseContentLength()
{
    const auto values = headers("Content-Length");
    if (values.empty())
        return true;
    const auto& text = values.front();
    const auto result = std::from_chars(text.data(), text.data() + text.size(), m_contentLength);
    return values.size() == 1 && result.ec == std::errc() && result.ptr == text.data() + text.size() &&
           m_contentLength >= 0;
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
    for (const auto& [key, value] : m_headers) {
        if (equalsIgnoringCase(key, name))
            values.push_back(value);
    }
    return values;
}

bool RequestHead::isChunked() const
{
    return equalsIgnoringCase(header("Transfer-Encoding"), "chunked");
}

bool RequestHead::keepsConnection() const
{
    const auto wish = header("Connection");
    return m_isOldVersion ? equalsIgnoringCase(wish, "keep-alive") : !equalsIgnoringCase(wish, "close");
}

bool RequestHead::expectsContinue() const
{
    return equalsIgnoringCase(header("Expect"), "100-continue");
}

} // namespace standin
