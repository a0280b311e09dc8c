#include "standin/ChunkedDecoder.h"

#include <algorithm>
#include <charconv>

namespace standin {

namespace {

constexpr std::size_t longestLine = 8192;

} // namespace

std::size_t ChunkedDecoder::feed(std::string_view bytes, const std::function<void(std::string_view)>& sink)
{
    std::size_t used = 0;
    while (used < bytes.size() && !isDone() && !hasFailed()) {
        if (m_state == State::data) {
            const auto piece = std::min(static_cast<std::size_t>(m_remaining), bytes.size() - used);
            sink(bytes.substr(used, piece));
            used += piece;
            m_remaining -= static_cast<std::int64_t>(piece);
            if (m_remaining == 0)
                m_state = State::dataEnd;
            continue;
        }
        const auto end = bytes.find('\n', used);
        const auto upTo = end == std::string_view::npos ? bytes.size() : end + 1;
        m_line += bytes.substr(used, upTo - used);
        used = upTo;
        if (m_line.ends_with('\n'))
            takeLine();
        else if (m_line.size() > longestLine)
            m_state = State::failed;
    }
    return used;
}

void ChunkedDecoder::takeLine()
{
    const std::string line = std::move(m_line);
    m_line.clear();
    if (!line.ends_with("\r\n")) {
        m_state = State::failed;
    } else if (m_state == State::trailer) {
        m_state = line.size() == 2 ? State::done : State::trailer;
    } else if (m_state == State::dataEnd) {
        m_state = line.size() == 2 ? State::size : State::failed;
    } else {
        const auto result = std::from_chars(line.data(), line.data() + line.size(), m_remaining, 16);
        if (result.ec != std::errc() || m_remaining < 0 || (*result.ptr != '\r' && *result.ptr != ';'))
            m_state = State::failed;
        else
            m_state = m_remaining == 0 ? State::trailer : State::data;
    }
}

} // namespace standin
