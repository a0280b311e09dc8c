#include "standin/Recorder.h"

#include "standin/Text.h"

#include <algorithm>

namespace standin {

Recorder::Recorder(const Options& options)
    : m_options(options)
{
}

void Recorder::connectionOpened()
{
    const std::lock_guard lock(m_mutex);
    ++m_connections;
    ++m_openConnections;
}

void Recorder::connectionClosed()
{
    const std::lock_guard lock(m_mutex);
    --m_openConnections;
}

std::int64_t Recorder::begin(std::int64_t connection, const RequestHead& head)
{
    RecordedRequest record;
    record.connection = connection;
    record.method = head.method();
    record.target = head.target();
    record.path = head.path();
    record.head = head.bytes();
    const std::lock_guard lock(m_mutex);
    m_records.push_back(std::move(record));
    if (m_records.size() > m_options.recordedRequests) {
        m_records.pop_front();
        ++m_firstNumber;
    }
    return m_firstNumber + static_cast<std::int64_t>(m_records.size()) - 1;
}

RecordedRequest* Recorder::find(std::int64_t number)
{
    const auto index = number - m_firstNumber;
    const bool isKept = index >= 0 && index < static_cast<std::int64_t>(m_records.size());
    return isKept ? &m_records[static_cast<std::size_t>(index)] : nullptr;
}

void Recorder::bodyReceived(std::int64_t number, std::string_view bytes)
{
    const std::lock_guard lock(m_mutex);
    m_bytesReceived += static_cast<std::int64_t>(bytes.size());
    auto* record = find(number);
    if (record == nullptr)
        return;
    record->bodyLength += static_cast<std::int64_t>(bytes.size());
    const auto room = m_options.recordedBodyBytes - static_cast<std::int64_t>(record->body.size());
    record->body += bytes.substr(0, static_cast<std::size_t>(std::max<std::int64_t>(room, 0)));
}

void Recorder::bodyCompleted(std::int64_t number, std::string digest)
{
    const std::lock_guard lock(m_mutex);
    if (auto* record = find(number)) {
        record->bodyComplete = true;
        record->bodyDigest = std::move(digest);
    }
}

void Recorder::answering(std::int64_t number, int status)
{
    const std::lock_guard lock(m_mutex);
    if (auto* record = find(number))
        record->status = status;
}

void Recorder::bodySent(std::int64_t number, std::int64_t bytes)
{
    const std::lock_guard lock(m_mutex);
    m_bytesSent += bytes;
    if (auto* record = find(number))
        record->sentBodyBytes += bytes;
}

void Recorder::finished(std::int64_t number)
{
    Listener listener;
    RecordedRequest copy;
    {
        const std::lock_guard lock(m_mutex);
        ++m_finished;
        auto* record = find(number);
        if (record == nullptr)
            return;
        record->finished = true;
        listener = m_listener;
        if (listener)
            copy = *record;
    }
    if (listener)
        listener(copy);
}

void Recorder::setListener(Listener listener)
{
    const std::lock_guard lock(m_mutex);
    m_listener = std::move(listener);
}

std::vector<RecordedRequest> Recorder::requests() const
{
    const std::lock_guard lock(m_mutex);
    return {m_records.begin(), m_records.end()};
}

std::vector<RecordedRequest> Recorder::requests(const std::string& path) const
{
    const std::lock_guard lock(m_mutex);
    std::vector<RecordedRequest> found;
    std::copy_if(m_records.begin(), m_records.end(), std::back_inserter(found),
                 [&path](const RecordedRequest& record) { return matchesPattern(path, record.path); });
    return found;
}

RecordedRequest Recorder::last() const
{
    const std::lock_guard lock(m_mutex);
    return m_records.empty() ? RecordedRequest() : m_records.back();
}

void Recorder::forget()
{
    const std::lock_guard lock(m_mutex);
    m_firstNumber += static_cast<std::int64_t>(m_records.size());
    m_records.clear();
}

std::size_t Recorder::requestCount() const
{
    const std::lock_guard lock(m_mutex);
    return static_cast<std::size_t>(m_firstNumber) + m_records.size();
}

std::size_t Recorder::finishedCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_finished;
}

std::size_t Recorder::connectionCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_connections;
}

std::size_t Recorder::openConnectionCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_openConnections;
}

std::int64_t Recorder::bytesReceived() const
{
    const std::lock_guard lock(m_mutex);
    return m_bytesReceived;
}

std::int64_t Recorder::bytesSent() const
{
    const std::lock_guard lock(m_mutex);
    return m_bytesSent;
}

} // namespace standin
