#include "standin/Server.h"

#include "standin/Certificate.h"
#include "standin/Connection.h"
#include "standin/MimeType.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>

#include <csignal>
#include <set>
#include <system_error>
#include <thread>

namespace standin {

namespace asio = boost::asio;
using asio::ip::tcp;

class Server::Implementation
{
public:
    explicit Implementation(const Options& options);
    ~Implementation();

    Shared shared;
    Certificate certificate;
    std::uint16_t port = 0;

private:
    void listen();
    void setUpTls();
    asio::awaitable<void> acceptAll();
    asio::awaitable<void> rest();
    void start(tcp::socket socket);
    void run();

    asio::io_context m_context{1};
    tcp::acceptor m_acceptor{m_context};
    asio::steady_timer m_restTimer{m_context};
    std::optional<asio::ssl::context> m_tls;
    std::set<std::shared_ptr<Connection>> m_connections;
    std::int64_t m_lastConnection = 0;
    std::thread m_thread;
};

Server::Implementation::Implementation(const Options& options)
    : shared(options)
{
    setUpTls();
    listen();
    asio::co_spawn(m_context, acceptAll(), [](const std::exception_ptr&) {});
    m_thread = std::thread([this] { run(); });
}

Server::Implementation::~Implementation()
{
    asio::post(m_context, [this] {
        boost::system::error_code ignored;
        m_acceptor.close(ignored);
        for (const auto& connection : m_connections)
            connection->abort();
    });
    m_thread.join();
}

void Server::Implementation::run()
{
    // A peer that has gone must not end the process through a write to it.
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
    m_context.run();
}

void Server::Implementation::setUpTls()
{
    if (shared.options.tls == Tls::none)
        return;
    certificate = Certificate::make(shared.options.tls);
    m_tls.emplace(asio::ssl::context::tls_server);
    m_tls->use_certificate(asio::buffer(certificate.certificate), asio::ssl::context::pem);
    m_tls->use_private_key(asio::buffer(certificate.key), asio::ssl::context::pem);
}

void Server::Implementation::listen()
{
    try {
        const tcp::endpoint endpoint(asio::ip::address_v4::loopback(), shared.options.port);
        m_acceptor.open(endpoint.protocol());
        m_acceptor.set_option(tcp::acceptor::reuse_address(true));
        if (shared.options.socketBufferBytes > 0) {
            m_acceptor.set_option(asio::socket_base::receive_buffer_size(shared.options.socketBufferBytes));
            m_acceptor.set_option(asio::socket_base::send_buffer_size(shared.options.socketBufferBytes));
        }
        m_acceptor.bind(endpoint);
        m_acceptor.listen();
        port = m_acceptor.local_endpoint().port();
    } catch (const boost::system::system_error& error) {
        throw std::system_error(error.code().value(), std::system_category(), "cannot listen");
    }
}

asio::awaitable<void> Server::Implementation::acceptAll()
{
    while (m_acceptor.is_open()) {
        boost::system::error_code error;
        tcp::socket socket = co_await m_acceptor.async_accept(asio::redirect_error(asio::use_awaitable, error));
        if (!error)
            start(std::move(socket));
        else
            co_await rest();
    }
}

/// Out of descriptors: the next try would fail at once, too.
asio::awaitable<void> Server::Implementation::rest()
{
    boost::system::error_code ignored;
    m_restTimer.expires_after(std::chrono::milliseconds(10));
    co_await m_restTimer.async_wait(asio::redirect_error(asio::use_awaitable, ignored));
}

void Server::Implementation::start(tcp::socket socket)
{
    shared.recorder.connectionOpened();
    if (shared.controls.takeConnectionReset()) {
        Wire(std::move(socket), nullptr).reset();
        shared.recorder.connectionClosed();
        return;
    }
    const auto connection =
        std::make_shared<Connection>(++m_lastConnection, std::move(socket), m_tls ? &*m_tls : nullptr, shared);
    m_connections.insert(connection);
    asio::co_spawn(m_context, connection->serve(), [this, connection](const std::exception_ptr&) {
        m_connections.erase(connection);
        shared.recorder.connectionClosed();
    });
}

Server::Server(const Options& options)
    : m_implementation(std::make_unique<Implementation>(options))
{
}

Server::~Server() = default;

std::uint16_t Server::port() const
{
    return m_implementation->port;
}

std::string Server::url() const
{
    const std::string scheme = m_implementation->shared.options.tls == Tls::none ? "http" : "https";
    return scheme + "://127.0.0.1:" + std::to_string(port()) + "/";
}

std::string Server::certificate() const
{
    return m_implementation->certificate.certificate;
}

void Server::addUser(User user)
{
    m_implementation->shared.jira.addUser(std::move(user));
}

void Server::addUser(std::string name, std::string password)
{
    addUser(User{.name = std::move(name), .password = std::move(password)});
}

void Server::addIssue(Issue issue)
{
    m_implementation->shared.jira.addIssue(std::move(issue));
}

void Server::addIssue(std::string key)
{
    addIssue(Issue{.key = std::move(key)});
}

std::int64_t Server::addAttachment(const std::string& issueKey, NewAttachment attachment)
{
    AttachmentState state;
    state.record.issueKey = issueKey;
    state.record.fileName = attachment.fileName;
    state.record.mimeType = attachment.mimeType.empty() ? mimeTypeOf(attachment.fileName) : attachment.mimeType;
    state.record.created = attachment.created;
    state.record.author = attachment.author;
    state.json = attachment.json;
    if (attachment.syntheticSize >= 0) {
        state.content = contentOfPattern(attachment.syntheticSize);
    } else {
        Digester digester(m_implementation->shared.options.digest);
        digester.add(attachment.bytes);
        state.record.digest = digester.finish();
        state.content = contentOfBytes(std::move(attachment.bytes));
    }
    state.record.size = state.content->size();
    return m_implementation->shared.jira.addAttachment(std::move(state));
}

void Server::removeAttachment(std::int64_t id)
{
    m_implementation->shared.jira.removeAttachment(id);
}

std::vector<StoredAttachment> Server::attachments(const std::string& issueKey) const
{
    std::vector<StoredAttachment> records;
    if (const auto issue = m_implementation->shared.jira.issue(issueKey)) {
        for (const auto& attachment : issue->attachments)
            records.push_back(attachment.record);
    }
    return records;
}

std::optional<std::string> Server::content(std::int64_t id) const
{
    const auto attachment = m_implementation->shared.jira.attachment(id);
    if (!attachment || !attachment->content)
        return std::nullopt;
    return allBytes(*attachment->content);
}

std::string Server::pattern(std::int64_t offset, std::size_t length)
{
    std::string bytes(length, '\0');
    patternBytes(offset, bytes.data(), length);
    return bytes;
}

void Server::expireSessions()
{
    m_implementation->shared.jira.expireSessions();
}

std::string Server::openSession(const std::string& userName)
{
    return m_implementation->shared.jira.openSession(userName);
}

std::size_t Server::sessionCount() const
{
    return m_implementation->shared.jira.sessionCount();
}

void Server::requireCaptcha(const std::string& userName, bool required)
{
    m_implementation->shared.jira.requireCaptcha(userName, required);
}

void Server::hideIssue(const std::string& key, int status)
{
    m_implementation->shared.jira.hideIssue(key, status);
}

void Server::allowAttachments(bool allowed)
{
    m_implementation->shared.jira.allowAttachments(allowed);
}

void Server::misbehave(Match match, Fault fault)
{
    m_implementation->shared.controls.add(std::move(match), std::move(fault));
}

void Server::behave()
{
    m_implementation->shared.controls.clear();
}

void Server::resetConnections(int connections)
{
    m_implementation->shared.controls.resetConnections(connections);
}

void Server::release()
{
    m_implementation->shared.controls.releaseAll();
}

std::vector<RecordedRequest> Server::requests() const
{
    return m_implementation->shared.recorder.requests();
}

std::vector<RecordedRequest> Server::requests(const std::string& path) const
{
    return m_implementation->shared.recorder.requests(path);
}

RecordedRequest Server::lastRequest() const
{
    return m_implementation->shared.recorder.last();
}

void Server::forgetRequests()
{
    m_implementation->shared.recorder.forget();
}

std::size_t Server::requestCount() const
{
    return m_implementation->shared.recorder.requestCount();
}

std::size_t Server::finishedRequestCount() const
{
    return m_implementation->shared.recorder.finishedCount();
}

std::size_t Server::connectionCount() const
{
    return m_implementation->shared.recorder.connectionCount();
}

std::size_t Server::openConnectionCount() const
{
    return m_implementation->shared.recorder.openConnectionCount();
}

std::size_t Server::heldCount() const
{
    return m_implementation->shared.controls.heldCount();
}

std::int64_t Server::bodyBytesReceived() const
{
    return m_implementation->shared.recorder.bytesReceived();
}

std::int64_t Server::bodyBytesSent() const
{
    return m_implementation->shared.recorder.bytesSent();
}

void Server::onFinished(std::function<void(const RecordedRequest&)> listener)
{
    m_implementation->shared.recorder.setListener(std::move(listener));
}

} // namespace standin
