#pragma once

// Boost 1.74's awaitable.hpp needs it and does not include it.
#include <utility>

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>

#include <cstddef>
#include <optional>

namespace standin {

/// One accepted connection, with or without TLS. Used in the server's thread only.
class Wire
{
public:
    /// `tls` is null for a plain connection.
    Wire(boost::asio::ip::tcp::socket socket, boost::asio::ssl::context* tls);

    boost::asio::any_io_executor executor() { return m_socket.get_executor(); }

    boost::asio::awaitable<bool> handshake();
    /// How many bytes came, 0 at the end of the stream and on any error.
    boost::asio::awaitable<std::size_t> receive(char* to, std::size_t atMost);
    /// All of it, or false.
    boost::asio::awaitable<bool> send(const char* bytes, std::size_t length);
    /// Tells the peer properly that nothing more will come.
    boost::asio::awaitable<void> finish();

    /// Breaks off what is under way.
    void close();
    void reset();
    /// The peer has closed or reset its side, unread bytes or not.
    bool isPeerGone();

private:
    using Socket = boost::asio::ip::tcp::socket;

    Socket m_socket;
    std::optional<boost::asio::ssl::stream<Socket&>> m_tls;
};

} // namespace standin
