#pragma once

#include "standin/Fault.h"
#include "standin/Options.h"
#include "standin/Records.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace standin {

/// A Jira on the loopback interface: it knows users, sessions, issues and their attachments, is as strict as a real
/// server about what it is sent, and misbehaves when told to.
///
/// It listens from construction to destruction, in a thread of its own; any number of connections are served side by
/// side, and none waits for another. Every method may be called from any thread at any time and returns at once. What
/// the server has seen is visible in requests() and the counters as it happens, so a test can wait for a condition
/// instead of a time.
///
/// It starts with no users and no issues. Bodies are streamed: neither an upload nor a download costs memory by its
/// size.
class Server
{
public:
    /// Throws std::system_error when the port cannot be had.
    explicit Server(const Options& options = {});
    /// Drops all connections, held ones too, and removes what was stored.
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    std::uint16_t port() const;
    /// Where it really listens, "http://127.0.0.1:PORT/" or with https.
    std::string url() const;
    /// The certificate in PEM form, so that a client can be told to trust it; empty without TLS.
    std::string certificate() const;

    // What is there. Adding under a name that is taken replaces.

    void addUser(User user);
    void addUser(std::string name, std::string password);
    void addIssue(Issue issue);
    void addIssue(std::string key);
    /// The new attachment's id; 0 when there is no such issue.
    std::int64_t addAttachment(const std::string& issueKey, NewAttachment attachment);
    void removeAttachment(std::int64_t id);

    /// In the order of their arrival, uploaded ones as well.
    std::vector<StoredAttachment> attachments(const std::string& issueKey) const;
    /// The bytes of an attachment; nullopt when it is unknown or went down the sink. Reads the whole file into memory.
    std::optional<std::string> content(std::int64_t id) const;
    /// The bytes of a synthetic file: `length` of them from `offset`.
    static std::string pattern(std::int64_t offset, std::size_t length);

    // What is allowed.

    /// Every session's cookie is stale from now on.
    void expireSessions();
    /// Makes a session without a login; its value for the JSESSIONID cookie.
    std::string openSession(const std::string& userName);
    std::size_t sessionCount() const;
    void requireCaptcha(const std::string& userName, bool required = true);
    /// The issue is there, but asking for it or attaching to it answers this status (401, 403 or 404); 0 shows it
    /// again.
    void hideIssue(const std::string& key, int status = 403);
    /// Attaching answers 403 while this is off.
    void allowAttachments(bool allowed);

    // How it misbehaves. The oldest fault that matches a request and is not used up applies, one per request.

    void misbehave(Match match, Fault fault);
    /// Forgets all faults; exchanges under way are not affected.
    void behave();
    /// Resets the next connections as soon as they are accepted, before a byte is read.
    void resetConnections(int connections = 1);
    /// Lets every exchange go on that is held at this moment.
    void release();

    // What it has seen.

    /// All requests whose head has been read, oldest first, those under way included.
    std::vector<RecordedRequest> requests() const;
    /// Those whose path matches, with "*" for any run of characters.
    std::vector<RecordedRequest> requests(const std::string& path) const;
    /// The newest one; an empty record when there is none.
    RecordedRequest lastRequest() const;
    void forgetRequests();

    std::size_t requestCount() const; ///< heads read since the start; not affected by forgetRequests
    std::size_t finishedRequestCount() const;
    std::size_t connectionCount() const; ///< accepted since the start
    std::size_t openConnectionCount() const;
    std::size_t heldCount() const; ///< exchanges that are held right now
    /// Bytes of request bodies read and of response bodies sent since the start, over all connections.
    std::int64_t bodyBytesReceived() const;
    std::int64_t bodyBytesSent() const;

    /// Called in the server's thread with each request that is finished; set before the first request comes. For
    /// logging.
    void onFinished(std::function<void(const RecordedRequest&)> listener);

private:
    class Implementation;
    std::unique_ptr<Implementation> m_implementation;
};

} // namespace standin
