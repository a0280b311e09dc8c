#include "tests/kit/LoopbackProxy.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

namespace tests {

namespace {

sockaddr_in loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

bool sendAll(int connection, const std::string& bytes)
{
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count = send(connection, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        sent += static_cast<std::size_t>(count);
    }
    return true;
}

/// Empty when there are not that many.
std::string take(int connection, std::size_t count)
{
    std::string bytes(count, '\0');
    // The system waits for a byte also where none is wanted.
    return count > 0 && recv(connection, bytes.data(), count, MSG_WAITALL) == static_cast<ssize_t>(count)
               ? bytes
               : std::string();
}

std::string takeHead(int connection)
{
    std::string head;
    while (!head.ends_with("\r\n\r\n")) {
        const std::string byte = take(connection, 1);
        if (byte.empty())
            return {};
        head += byte;
    }
    return head;
}

/// Of a length that stands in front of it.
std::string takeText(int connection)
{
    const std::string length = take(connection, 1);
    return length.empty() ? std::string() : take(connection, static_cast<unsigned char>(length[0]));
}

std::string portText(const std::string& bytes)
{
    return bytes.size() < 2
               ? std::string()
               : std::to_string(static_cast<unsigned char>(bytes[0]) * 256 + static_cast<unsigned char>(bytes[1]));
}

} // namespace

LoopbackProxy::LoopbackProxy(int targetPort, std::string credentials)
    : m_targetPort(targetPort)
    , m_credentials(std::move(credentials))
    , m_listener(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    if (bind(m_listener, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(m_listener, SOMAXCONN) != 0 ||
        getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        throw std::runtime_error("no port for a proxy");
    m_port = ntohs(address.sin_port);
    m_acceptor = std::thread([this] { acceptAll(); });
}

LoopbackProxy::~LoopbackProxy()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
        for (const int connection : m_open)
            shutdown(connection, SHUT_RDWR);
    }
    shutdown(m_listener, SHUT_RDWR);
    m_acceptor.join();
    for (std::thread& thread : m_threads)
        thread.join();
    close(m_listener);
}

std::vector<std::string> LoopbackProxy::asked() const
{
    const std::lock_guard lock(m_mutex);
    return m_asked;
}

void LoopbackProxy::remember(const std::string& question)
{
    const std::lock_guard lock(m_mutex);
    m_asked.push_back(question);
}

void LoopbackProxy::keep(int connection)
{
    const std::lock_guard lock(m_mutex);
    m_open.push_back(connection);
    if (m_isClosed)
        shutdown(connection, SHUT_RDWR);
}

void LoopbackProxy::drop(int connection)
{
    const std::lock_guard lock(m_mutex);
    m_open.remove(connection);
    close(connection);
}

void LoopbackProxy::acceptAll()
{
    for (;;) {
        const int client = accept(m_listener, nullptr, nullptr);
        if (client < 0)
            return;
        keep(client);
        m_threads.emplace_back([this, client] {
            serve(client);
            drop(client);
        });
    }
}

void LoopbackProxy::serve(int client)
{
    char first = 0;
    if (recv(client, &first, 1, MSG_PEEK) != 1)
        return;
    if (first == 5)
        serveSocks(client);
    else
        serveHTTP(client);
}

void LoopbackProxy::serveSocks(int client)
{
    take(client, 1);
    const bool offersCredentials = takeText(client).find('\x02') != std::string::npos;
    const bool wantsCredentials = !m_credentials.empty();
    if (wantsCredentials && !offersCredentials) {
        sendAll(client, "\x05\xff");
        return;
    }
    sendAll(client, wantsCredentials ? std::string("\x05\x02") : std::string("\x05\x00", 2));
    if (wantsCredentials) {
        take(client, 1);
        const std::string user = takeText(client);
        const bool isRight = user + ':' + takeText(client) == m_credentials;
        sendAll(client, isRight ? std::string("\x01\x00", 2) : std::string("\x01\x01"));
        if (!isRight)
            return;
    }
    const std::string request = take(client, 4);
    if (request.empty())
        return;
    std::string host;
    if (request[3] == 3) {
        host = takeText(client);
    } else {
        char text[INET_ADDRSTRLEN] = {};
        inet_ntop(AF_INET, take(client, 4).data(), text, sizeof text);
        host = text;
    }
    remember("SOCKS " + host + ':' + portText(take(client, 2)));
    const bool isRefused = m_refusal != 0;
    sendAll(client, std::string("\x05", 1) + (isRefused ? '\x02' : '\0') + std::string("\0\x01\0\0\0\0\0\0", 8));
    if (isRefused)
        return;
    const int server = connectToTarget();
    relay(client, server, {});
    drop(server);
}

void LoopbackProxy::serveHTTP(int client)
{
    std::string head = takeHead(client);
    if (head.empty())
        return;
    const std::string question = head.substr(0, head.find(" HTTP/"));
    remember(question);
    if (!isKnown(head)) {
        sendAll(client, "HTTP/1.1 407 Proxy Authentication Required\r\nProxy-Authenticate: Basic realm=\"p\"\r\n"
                        "Content-Length: 0\r\nConnection: close\r\n\r\n");
        return;
    }
    const bool isTunnel = question.starts_with("CONNECT ");
    if (isTunnel && m_refusal != 0) {
        sendAll(client, "HTTP/1.1 " + std::to_string(m_refusal) + " No\r\nContent-Length: 0\r\n\r\n");
        return;
    }
    const int server = connectToTarget();
    if (isTunnel) {
        sendAll(client, "HTTP/1.1 200 Connection established\r\n\r\n");
        relay(client, server, {});
    } else {
        // "GET http://host/path HTTP/1.1" for a server: its path alone; and one request for each connection.
        const std::size_t scheme = head.find("http://");
        head.erase(scheme, head.find('/', scheme + std::strlen("http://")) - scheme);
        head.insert(head.size() - 2, "Connection: close\r\n");
        relay(client, server, head);
    }
    drop(server);
}

bool LoopbackProxy::isKnown(const std::string& head) const
{
    const QByteArray wanted = "Proxy-Authorization: Basic " + QByteArray::fromStdString(m_credentials).toBase64();
    return m_credentials.empty() || QByteArray::fromStdString(head).contains(wanted);
}

int LoopbackProxy::connectToTarget()
{
    const int server = socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in address = loopback(m_targetPort);
    connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    keep(server);
    return server;
}

void LoopbackProxy::relay(int client, int server, const std::string& first)
{
    if (!sendAll(server, first))
        return;
    pollfd ends[2] = {{client, POLLIN, 0}, {server, POLLIN, 0}};
    std::string bytes(1 << 16, '\0');
    for (;;) {
        if (poll(ends, 2, -1) < 0)
            return;
        for (int from = 0; from < 2; ++from) {
            if (ends[from].revents == 0)
                continue;
            const ssize_t count = recv(ends[from].fd, bytes.data(), bytes.size(), 0);
            if (count <= 0 || !sendAll(ends[1 - from].fd, bytes.substr(0, static_cast<std::size_t>(count))))
                return;
        }
    }
}

} // namespace tests
