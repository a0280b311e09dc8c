#pragma once

#include "standin/PartHeader.h"

#include <functional>
#include <string>
#include <string_view>

namespace standin {

/// Reads a multipart body as it comes, in pieces of any size, and keeps nothing of it but the few bytes at the end of a
/// piece that may turn out to be part of a delimiter.
class MultipartParser
{
public:
    struct Handler
    {
        std::function<void(const PartHeader&)> begin;
        std::function<void(std::string_view)> data;
        std::function<void()> end; ///< called when the delimiter behind the part has been seen
    };

    MultipartParser(std::string_view boundary, Handler handler);

    void feed(std::string_view bytes);

    /// The closing delimiter has been seen; what follows is ignored.
    bool isComplete() const { return m_state == State::complete; }
    bool hasFailed() const { return m_state == State::failed; }

private:
    enum class State { preamble, afterDelimiter, header, data, complete, failed };

    std::string_view feedContent(std::string_view bytes);
    std::string_view feedAfterDelimiter(std::string_view bytes);
    std::string_view feedHeader(std::string_view bytes);
    std::string_view resolvePending(std::string_view bytes);
    void emitContent(std::string_view bytes);
    void foundDelimiter();

    std::string m_delimiter; ///< with the line end that belongs to it
    Handler m_handler;
    State m_state = State::preamble;
    std::string m_pending;
};

} // namespace standin
