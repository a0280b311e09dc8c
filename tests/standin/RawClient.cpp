#include "tests/standin/RawClient.h"

#include "standin/Text.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

namespace standin_tests {

namespace {

Reply parseHead(const std::string& head)
{
    Reply reply;
    reply.head = head;
    reply.status = head.size() > 12 ? std::atoi(head.c_str() + 9) : 0;
    return reply;
}

} // namespace

std::string Reply::header(const std::string& name) const
{
    std::string joined;
    for (auto line : standin::split(head, '\n')) {
        const auto colon = line.find(':');
        if (colon == std::string_view::npos || !standin::equalsIgnoringCase(line.substr(0, colon), name))
            continue;
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        joined += (joined.empty() ? "" : ", ") + std::string(standin::trimmed(line.substr(colon + 1)));
    }
    return joined;
}

RawClient::RawClient(std::uint16_t port)
    : m_socket(::socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    // A test that would wait for ever fails instead.
    const timeval limit{.tv_sec = 60, .tv_usec = 0};
    ::setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    ::setsockopt(m_socket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    const int on = 1;
    ::setsockopt(m_socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        m_end = End::reset;
}

RawClient::~RawClient()
{
    ::close(m_socket);
}

bool RawClient::send(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t sent = ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            // The system tells of a reset once: whoever hears of it while sending reads a plain end afterwards.
            if (errno == ECONNRESET)
                m_end = End::reset;
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

void RawClient::endSending()
{
    ::shutdown(m_socket, SHUT_WR);
}

bool RawClient::fill()
{
    static thread_local char bytes[1 << 18];
    const ssize_t got = ::recv(m_socket, bytes, sizeof bytes, 0);
    if (got > 0) {
        m_buffer.append(bytes, static_cast<std::size_t>(got));
        return true;
    }
    if (got < 0 && errno == ECONNRESET)
        m_end = End::reset;
    else if (got == 0 && m_end == End::none)
        m_end = End::closed;
    return false;
}

Reply RawClient::reply()
{
    for (;;) {
        std::size_t end = 0;
        while ((end = m_buffer.find("\r\n\r\n")) == std::string::npos) {
            if (!fill())
                return {};
        }
        auto reply = parseHead(m_buffer.substr(0, end + 4));
        m_buffer.erase(0, end + 4);
        if (reply.status == 100)
            continue;
        const auto length = static_cast<std::size_t>(std::atoll(reply.header("Content-Length").c_str()));
        reply.body = read(length);
        reply.isComplete = reply.body.size() == length;
        return reply;
    }
}

std::string RawClient::readAll()
{
    while (fill()) {
    }
    return std::exchange(m_buffer, {});
}

std::string RawClient::read(std::size_t bytes)
{
    while (m_buffer.size() < bytes && fill()) {
    }
    const auto taken = m_buffer.substr(0, bytes);
    m_buffer.erase(0, bytes);
    return taken;
}

} // namespace standin_tests
