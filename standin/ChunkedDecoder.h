#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace standin {

/// Takes the chunked transfer coding off a stream of bytes. Boost.Beast, which reads the heads, would go on waiting after
/// a line that ends in a line feed alone and after a chunk that is longer than it says.
class ChunkedDecoder
{
public:
    /// Hands the payload in `bytes` to `sink`; returns how many bytes belonged to the body, fewer than all once done.
    std::size_t feed(std::string_view bytes, const std::function<void(std::string_view)>& sink);

    bool isDone() const { return m_state == State::done; }
    bool hasFailed() const { return m_state == State::failed; }

private:
    enum class State { size, data, dataEnd, trailer, done, failed };

    void takeLine();

    State m_state = State::size;
    std::string m_line;
    std::int64_t m_remaining = 0;
};

} // namespace standin
