#include "platform/foundation/loading/curl/ReadAhead.h"

#include <algorithm>
#include <cstring>
#include <system_error>
#include <thread>
#include <utility>

namespace tljira {

namespace {

/// As much as libcurl asks for at a time.
constexpr qint64 largestChunk = 256L * 1024;

} // namespace

ReadAhead::ReadAhead(DataReader reader, qint64 size, std::function<void()> whenReady)
    : m_chunkSize(std::min(size, largestChunk))
    , m_whenReady(std::move(whenReady))
    , m_reader(std::move(reader))
{
}

bool ReadAhead::start()
{
    try {
        std::thread([self = shared_from_this()] { self->run(); }).detach();
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

void ReadAhead::giveUp()
{
    const std::lock_guard lock(m_mutex);
    m_isGivenUp = true;
    m_hasJob.notify_one();
}

void ReadAhead::run()
{
    while (true) {
        switch (awaitJob()) {
        case Job::Read:
            readChunk();
            break;
        case Job::Check:
            checkFiles();
            break;
        case Job::End:
            return;
        }
    }
}

ReadAhead::Job ReadAhead::awaitJob()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        if (m_isGivenUp)
            return Job::End;
        if (!m_isAtEnd && m_filled < m_chunks.size())
            return Job::Read;
        if (std::exchange(m_mustCheck, false))
            return Job::Check;
        m_hasJob.wait(lock);
    }
}

void ReadAhead::readChunk()
{
    // Only the taking thread lessens the number of filled chunks, and it leaves the first free one where it is.
    std::size_t free = 0;
    {
        const std::lock_guard lock(m_mutex);
        free = (m_firstFilled + m_filled) % m_chunks.size();
    }
    Chunk& chunk = m_chunks[free];
    if (!chunk.bytes)
        chunk.bytes = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(m_chunkSize));
    chunk.size = m_reader.read(chunk.bytes.get(), m_chunkSize);

    std::unique_lock lock(m_mutex);
    if (chunk.size > 0)
        ++m_filled;
    else
        m_isAtEnd = true;
    m_error = m_reader.error();
    tellIfAwaited(std::move(lock));
}

void ReadAhead::checkFiles()
{
    const bool isUnchanged = m_reader.filesAreUnchanged();
    std::unique_lock lock(m_mutex);
    m_check = isUnchanged ? Check::Unchanged : Check::Changed;
    m_error = m_reader.error();
    tellIfAwaited(std::move(lock));
}

void ReadAhead::tellIfAwaited(std::unique_lock<std::mutex> lock)
{
    const bool isAwaited = std::exchange(m_isAwaited, false);
    lock.unlock();
    if (isAwaited)
        m_whenReady();
}

qint64 ReadAhead::read(char* buffer, qint64 capacity)
{
    const Chunk* chunk = nullptr;
    {
        const std::lock_guard lock(m_mutex);
        if (m_filled == 0) {
            if (m_isAtEnd)
                return m_error ? -1 : 0;
            m_isAwaited = true;
            return mustWait;
        }
        chunk = &m_chunks[m_firstFilled];
    }
    const qint64 count = std::min(capacity, chunk->size - m_taken);
    std::memcpy(buffer, chunk->bytes.get() + m_taken, static_cast<std::size_t>(count));
    m_taken += count;
    if (m_taken < chunk->size)
        return count;

    m_taken = 0;
    const std::lock_guard lock(m_mutex);
    m_firstFilled = (m_firstFilled + 1) % m_chunks.size();
    // To wake a thread takes about as long as to read a chunk that is in memory already: several at a time pay.
    if (--m_filled == m_chunks.size() / 2)
        m_hasJob.notify_one();
    return count;
}

ReadAhead::Check ReadAhead::check()
{
    const std::lock_guard lock(m_mutex);
    if (m_check == Check::Pending) {
        m_mustCheck = true;
        m_isAwaited = true;
        m_hasJob.notify_one();
    }
    return m_check;
}

std::optional<Error> ReadAhead::error() const
{
    const std::lock_guard lock(m_mutex);
    return m_error;
}

} // namespace tljira
