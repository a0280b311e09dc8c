#pragma once

#include "standin/Call.h"
#include "standin/ChunkedDecoder.h"
#include "standin/Controls.h"
#include "standin/Digester.h"
#include "standin/Outgoing.h"
#include "standin/Recorder.h"
#include "standin/StopList.h"
#include "standin/Wire.h"

#include <boost/asio/awaitable.hpp>
#include <boost/asio/steady_timer.hpp>

#include <chrono>
#include <cstdint>
#include <string_view>
#include <vector>

namespace standin {

/// What all connections of a server share.
struct Shared
{
    const Options options;
    Jira jira;
    Controls controls;
    Recorder recorder;

    explicit Shared(const Options& o)
        : options(o)
        , jira(options)
        , recorder(options)
    {
    }
};

/// Serves the requests of one connection, one after the other. Lives in the server's thread.
class Connection
{
public:
    Connection(std::int64_t number, boost::asio::ip::tcp::socket socket, boost::asio::ssl::context* tls,
               Shared& shared);

    boost::asio::awaitable<void> serve();
    /// Makes serve() end soon, whatever it is doing.
    void abort();

private:
    using Clock = std::chrono::steady_clock;
    template <typename T>
    using Awaitable = boost::asio::awaitable<T>;

    Awaitable<bool> exchange();
    Awaitable<bool> answer(const RequestHead& head, const Fault& fault, std::int64_t number);
    Awaitable<std::optional<RequestHead>> receiveHead();
    Awaitable<void> receiveBody(const RequestHead& head, const Fault& fault, std::int64_t number, Call* call);
    Awaitable<void> send(const Outgoing& outgoing, const Fault& fault, std::int64_t number);
    void fillSendBuffer(const Outgoing& outgoing, std::int64_t position, std::size_t length);

    Awaitable<void> perform(std::vector<Stop> stops);
    Awaitable<void> hold();
    Awaitable<void> pause(std::chrono::milliseconds duration);
    Awaitable<void> tick(std::chrono::milliseconds duration);

    Awaitable<bool> fill(std::size_t atMost);
    std::string_view received() const { return {m_input.data() + m_begin, m_end - m_begin}; }
    void consume(std::size_t bytes) { m_begin += bytes; }

    const std::int64_t m_number;
    Wire m_wire;
    Shared& m_shared;
    boost::asio::steady_timer m_timer;
    bool m_isAborted = false;
    std::vector<char> m_input;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::vector<char> m_output;
};

} // namespace standin
