#include "standin/MultipartParser.h"

#include <algorithm>
#include <cstring>

namespace standin {

namespace {

constexpr std::size_t mostHeaderBytes = 10240;

/// memmem looks at far fewer bytes than there are; std::string_view::find does not.
std::size_t positionOf(std::string_view needle, std::string_view bytes)
{
    const void* found = bytes.empty() ? nullptr : ::memmem(bytes.data(), bytes.size(), needle.data(), needle.size());
    return found == nullptr ? std::string_view::npos
                            : static_cast<std::size_t>(static_cast<const char*>(found) - bytes.data());
}

/// How many bytes at the end may be the beginning of `needle`.
std::size_t partialMatch(std::string_view bytes, std::string_view needle)
{
    for (auto length = std::min(bytes.size(), needle.size() - 1); length > 0; --length) {
        if (bytes.ends_with(needle.substr(0, length)))
            return length;
    }
    return 0;
}

} // namespace

MultipartParser::MultipartParser(std::string_view boundary, Handler handler)
    : m_delimiter("\r\n--")
    , m_handler(std::move(handler))
    , m_pending("\r\n") // the first delimiter needs no line end before it
{
    m_delimiter += boundary;
}

void MultipartParser::feed(std::string_view bytes)
{
    while (!bytes.empty() && !isComplete() && !hasFailed()) {
        if (m_state == State::afterDelimiter)
            bytes = feedAfterDelimiter(bytes);
        else if (m_state == State::header)
            bytes = feedHeader(bytes);
        else
            bytes = feedContent(bytes);
    }
}

std::string_view MultipartParser::feedContent(std::string_view bytes)
{
    if (!m_pending.empty())
        return resolvePending(bytes);
    const auto found = positionOf(m_delimiter, bytes);
    if (found != std::string_view::npos) {
        emitContent(bytes.substr(0, found));
        foundDelimiter();
        return bytes.substr(found + m_delimiter.size());
    }
    const auto kept = partialMatch(bytes, m_delimiter);
    emitContent(bytes.substr(0, bytes.size() - kept));
    m_pending = bytes.substr(bytes.size() - kept);
    return {};
}

/// A delimiter that starts in the pending bytes ends at most a delimiter's length into the new ones.
std::string_view MultipartParser::resolvePending(std::string_view bytes)
{
    const auto taken = std::min(bytes.size(), m_delimiter.size());
    const auto pendingBytes = m_pending.size();
    std::string window = std::move(m_pending);
    m_pending.clear();
    window += bytes.substr(0, taken);
    const auto found = window.find(m_delimiter);
    if (found != std::string::npos) {
        emitContent(std::string_view(window).substr(0, found));
        foundDelimiter();
        return bytes.substr(found + m_delimiter.size() - pendingBytes);
    }
    if (taken == m_delimiter.size()) {
        emitContent(std::string_view(window).substr(0, pendingBytes));
        return bytes;
    }
    const auto kept = partialMatch(window, m_delimiter);
    emitContent(std::string_view(window).substr(0, window.size() - kept));
    m_pending = window.substr(window.size() - kept);
    return {};
}

void MultipartParser::emitContent(std::string_view bytes)
{
    if (m_state == State::data && !bytes.empty())
        m_handler.data(bytes);
}

void MultipartParser::foundDelimiter()
{
    if (m_state == State::data)
        m_handler.end();
    m_state = State::afterDelimiter;
}

std::string_view MultipartParser::feedAfterDelimiter(std::string_view bytes)
{
    const auto taken = std::min(bytes.size(), 2 - m_pending.size());
    m_pending += bytes.substr(0, taken);
    if (m_pending.size() == 2) {
        if (m_pending == "--")
            m_state = State::complete;
        else
            m_state = m_pending == "\r\n" ? State::header : State::failed;
        m_pending.clear();
    }
    return bytes.substr(taken);
}

std::string_view MultipartParser::feedHeader(std::string_view bytes)
{
    const auto before = m_pending.size();
    m_pending += bytes.substr(0, mostHeaderBytes - before);
    const auto end = m_pending.find("\r\n\r\n");
    if (end == std::string::npos) {
        if (m_pending.size() == mostHeaderBytes)
            m_state = State::failed;
        return {};
    }
    const auto header = PartHeader::parse(std::string_view(m_pending).substr(0, end));
    m_pending.clear();
    m_state = State::data;
    m_handler.begin(header);
    return bytes.substr(end + 4 - before);
}

} // namespace standin
