#pragma once

#include <QByteArray>

#include <atomic>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tests {

/// A proxy on a free port of the loopback interface, which speaks HTTP (tunnels included) and SOCKS 5 at one port. It
/// takes whatever it is asked for to one port of this machine, so that a server answers under any name.
class LoopbackProxy
{
public:
    /// With a user, "anna:secret", it wants these credentials of everybody.
    explicit LoopbackProxy(int targetPort, std::string credentials = {});
    /// Drops all connections.
    ~LoopbackProxy();
    LoopbackProxy(const LoopbackProxy&) = delete;
    LoopbackProxy& operator=(const LoopbackProxy&) = delete;

    int port() const { return m_port; }
    /// What it was asked for, in that order: "GET http://host/path", "CONNECT host:port", "SOCKS host:port".
    std::vector<std::string> asked() const;
    /// What it says to every tunnel and every SOCKS request in place of opening one.
    void refuse(int status) { m_refusal = status; }

private:
    void acceptAll();
    void serve(int client);
    void serveSocks(int client);
    void serveHTTP(int client);
    bool isKnown(const std::string& head) const;
    void remember(const std::string& question);
    int connectToTarget();
    void relay(int client, int server, const std::string& first);
    void keep(int connection);
    void drop(int connection);

    const int m_targetPort;
    const std::string m_credentials;
    int m_listener = -1;
    int m_port = 0;
    std::atomic<int> m_refusal = 0;
    mutable std::mutex m_mutex;
    std::vector<std::string> m_asked;
    std::list<int> m_open;
    bool m_isClosed = false;
    std::list<std::thread> m_threads;
    std::thread m_acceptor;
};

} // namespace tests
