#pragma once

#include "standin/Options.h"
#include "standin/Records.h"
#include "standin/RequestHead.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace standin {

/// Keeps what the server sees, as it happens. Safe to use from any thread. A request is known by the number that
/// begin() gives; what is reported for one that has been forgotten only counts.
class Recorder
{
public:
    using Listener = std::function<void(const RecordedRequest&)>;

    explicit Recorder(const Options& options);

    void connectionOpened();
    void connectionClosed();

    std::int64_t begin(std::int64_t connection, const RequestHead& head);
    void bodyReceived(std::int64_t number, std::string_view bytes);
    void bodyCompleted(std::int64_t number, std::string digest);
    void answering(std::int64_t number, int status);
    void bodySent(std::int64_t number, std::int64_t bytes);
    void finished(std::int64_t number);

    void setListener(Listener listener);

    std::vector<RecordedRequest> requests() const;
    std::vector<RecordedRequest> requests(const std::string& path) const;
    RecordedRequest last() const;
    void forget();

    std::size_t requestCount() const;
    std::size_t finishedCount() const;
    std::size_t connectionCount() const;
    std::size_t openConnectionCount() const;
    std::int64_t bytesReceived() const;
    std::int64_t bytesSent() const;

private:
    RecordedRequest* find(std::int64_t number);

    const Options m_options;
    mutable std::mutex m_mutex;
    std::deque<RecordedRequest> m_records;
    std::int64_t m_firstNumber = 0; ///< of the oldest record that is kept
    std::size_t m_finished = 0;
    std::size_t m_connections = 0;
    std::size_t m_openConnections = 0;
    std::int64_t m_bytesReceived = 0;
    std::int64_t m_bytesSent = 0;
    Listener m_listener;
};

} // namespace standin
