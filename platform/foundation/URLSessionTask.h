#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/HTTPURLResponse.h"
#include "platform/foundation/URLRequest.h"

#include <functional>
#include <memory>

namespace platform {

class Transfer;
class URLSession;

/// One request under way. Made by a URLSession; a task that nobody holds goes on all the same.
class TL_EXPORT URLSessionTask : public std::enable_shared_from_this<URLSessionTask>
{
public:
    virtual ~URLSessionTask();

    /// Starts the task. A second call, or one after `cancel`, does nothing. From any thread.
    void resume();

    /// Returns at once; the task ends a little later with the error "cancelled" (-999), unless it has already ended. No
    /// progress is reported any more. A task that was never started ends in the same way. From any thread.
    void cancel();

    const URLRequest& originalRequest() const { return m_request; }
    quint64 taskIdentifier() const { return m_identifier; }
    std::size_t hash() const;

protected:
    URLSessionTask(std::weak_ptr<URLSession> session, URLRequest request, quint64 identifier);

private:
    friend class URLSession;
    friend class Transfer;

    std::weak_ptr<URLSession> m_session;
    URLRequest m_request;
    quint64 m_identifier;
};

/// The body of the answer arrives in memory, in one piece, at the end.
class TL_EXPORT URLSessionDataTask : public URLSessionTask
{
public:
    /// Body, head and error, in the platform's own order. Without an error all three come as the server sent them; with
    /// one, body and head are absent.
    using Completion =
        std::function<void(const std::optional<Data>& body, const std::optional<HTTPURLResponse>& response,
                           const std::optional<Error>& error)>;
};

/// The body of the answer arrives in a temporary file.
class TL_EXPORT URLSessionDownloadTask : public URLSessionTask
{
};

} // namespace platform
