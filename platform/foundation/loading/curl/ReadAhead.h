#pragma once

#include "platform/foundation/values/Data.h"

#include <array>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace tljira {

/// Reads a body on a thread of its own, a few pieces ahead of the one thread that takes them. The reading thread shares
/// this object and nobody waits for it: given up, it ends by itself as soon as its read returns, however long the disk
/// takes.
class ReadAhead : public std::enable_shared_from_this<ReadAhead>
{
public:
    enum class Check { Pending, Unchanged, Changed };

    /// What `read` answers while nothing has been read yet.
    static constexpr qint64 mustWait = DataReader::mustWait;

    /// Goes on where `reader` stands, `size` bytes before its end. `whenReady` is called on the reading thread once
    /// after each "must wait" and each pending check.
    ReadAhead(DataReader reader, qint64 size, std::function<void()> whenReady);

    /// Begins to read. False when the system has no thread left.
    bool start();
    /// Nobody takes anything any more.
    void giveUp();

    /// As DataReader::read, but answers `mustWait` instead of waiting for a disk.
    qint64 read(char* buffer, qint64 capacity);
    /// Looks at the files once more after the last byte was taken.
    Check check();
    /// Why `read` answered -1 or a check "changed".
    std::optional<Error> error() const;

private:
    enum class Job { Read, Check, End };

    struct Chunk
    {
        std::unique_ptr<char[]> bytes;
        qint64 size = 0;
    };

    void run();
    Job awaitJob();
    void readChunk();
    void checkFiles();
    void tellIfAwaited(std::unique_lock<std::mutex> lock);

    const qint64 m_chunkSize;
    const std::function<void()> m_whenReady;

    // The reading thread's own, once it runs.
    DataReader m_reader;

    // A chunk belongs to the reading thread until it is filled, then to the taking thread until it is taken.
    std::array<Chunk, 4> m_chunks;
    /// Bytes taken of the first filled chunk: the taking thread's own.
    qint64 m_taken = 0;

    /// Around what follows.
    mutable std::mutex m_mutex;
    std::condition_variable m_hasJob;
    std::size_t m_firstFilled = 0;
    std::size_t m_filled = 0;
    bool m_isAtEnd = false;
    bool m_isAwaited = false;
    bool m_isGivenUp = false;
    bool m_mustCheck = false;
    Check m_check = Check::Pending;
    std::optional<Error> m_error;
};

} // namespace tljira
