#include "standin/Wire.h"

#include <boost/asio/redirect_error.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>

#include <poll.h>

#include <chrono>

#ifndef POLLRDHUP
#define POLLRDHUP 0
#endif

namespace standin {

namespace asio = boost::asio;
using boost::system::error_code;

Wire::Wire(Socket socket, asio::ssl::context* tls)
    : m_socket(std::move(socket))
{
    error_code ignored;
    m_socket.set_option(asio::ip::tcp::no_delay(true), ignored);
    if (tls != nullptr)
        m_tls.emplace(m_socket, *tls);
}

asio::awaitable<bool> Wire::handshake()
{
    error_code error;
    if (m_tls)
        co_await m_tls->async_handshake(asio::ssl::stream_base::server,
                                        asio::redirect_error(asio::use_awaitable, error));
    co_return !error;
}

asio::awaitable<std::size_t> Wire::receive(char* to, std::size_t atMost)
{
    error_code error;
    const auto buffer = asio::buffer(to, atMost);
    std::size_t got = 0;
    if (m_tls)
        got = co_await m_tls->async_read_some(buffer, asio::redirect_error(asio::use_awaitable, error));
    else
        got = co_await m_socket.async_read_some(buffer, asio::redirect_error(asio::use_awaitable, error));
    co_return got;
}

asio::awaitable<bool> Wire::send(const char* bytes, std::size_t length)
{
    error_code error;
    const auto buffer = asio::buffer(bytes, length);
    if (m_tls)
        co_await asio::async_write(*m_tls, buffer, asio::redirect_error(asio::use_awaitable, error));
    else
        co_await asio::async_write(m_socket, buffer, asio::redirect_error(asio::use_awaitable, error));
    co_return !error;
}

asio::awaitable<void> Wire::finish()
{
    error_code error;
    if (m_tls && m_socket.is_open()) {
        // The peer may never answer the closing alert.
        asio::steady_timer limit(m_socket.get_executor(), std::chrono::milliseconds(200));
        limit.async_wait([this](const error_code& cancelled) {
            if (!cancelled)
                close();
        });
        co_await m_tls->async_shutdown(asio::redirect_error(asio::use_awaitable, error));
    }
    m_socket.shutdown(Socket::shutdown_both, error);
    close();
}

void Wire::close()
{
    error_code ignored;
    m_socket.close(ignored);
}

void Wire::reset()
{
    error_code ignored;
    m_socket.set_option(asio::socket_base::linger(true, 0), ignored);
    m_socket.close(ignored);
}

bool Wire::isPeerGone()
{
    if (!m_socket.is_open())
        return true;
    pollfd state{.fd = m_socket.native_handle(), .events = POLLRDHUP, .revents = 0};
    return ::poll(&state, 1, 0) > 0 && (state.revents & (POLLRDHUP | POLLHUP | POLLERR)) != 0;
}

} // namespace standin
