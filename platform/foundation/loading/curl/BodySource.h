#pragma once

#include "platform/foundation/loading/curl/ReadAhead.h"
#include "platform/foundation/values/Data.h"

#include <functional>
#include <memory>
#include <optional>

namespace tljira {

/// The body of a request on its way to the server, for a thread that must never wait for a disk. What lies in memory is
/// handed out as it is, without another copy; from the first byte on that a disk has to give, the body is read ahead.
class BodySource
{
public:
    using Check = ReadAhead::Check;
    static constexpr qint64 mustWait = DataReader::mustWait;

    /// `whenReady` is called, on another thread, once after each "must wait" and each pending check.
    BodySource(const Data& body, std::function<void()> whenReady);
    ~BodySource();
    BodySource(const BodySource&) = delete;
    BodySource& operator=(const BodySource&) = delete;

    /// The number of bytes filled in, 0 at the end, -1 for `error`, or `mustWait`.
    qint64 read(char* buffer, qint64 capacity);

    /// Whether what was handed out is what the files held when they were opened. A body that was not handed out to its
    /// end has nothing to answer for.
    Check check();

    std::optional<Error> error() const;

private:
    qint64 readFromDisk(char* buffer, qint64 capacity);

    const std::function<void()> m_whenReady;
    DataReader m_reader;
    qint64 m_left;
    /// Reads on from where the reader came to a disk; null before, and where there is no thread to be had.
    std::shared_ptr<ReadAhead> m_ahead;
    std::optional<Error> m_startError;
};

} // namespace tljira
