#pragma once

#include "platform/foundation/Data.h"
#include "platform/foundation/HTTPURLResponse.h"
#include "platform/foundation/URLRequest.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace platform {

class Transfer;
class URLSession;

/// One request under way. Made by a URLSession; a task that nobody holds goes on all the same.
class TL_EXPORT URLSessionTask : public std::enable_shared_from_this<URLSessionTask>
{
public:
    virtual ~URLSessionTask();
    URLSessionTask(const URLSessionTask&) = delete;
    URLSessionTask& operator=(const URLSessionTask&) = delete;

    /// Starts the task. A second call, or one after `cancel`, does nothing. From any thread.
    void resume();

    /// Returns at once; the task ends a little later with the error "cancelled" (-999), unless its end was already
    /// reported. No progress is reported any more. A task that was never started ends in the same way. From any thread.
    void cancel();

    /// Started, neither cancelled nor at its end.
    bool isRunning() const;

    const URLRequest& originalRequest() const { return m_request; }
    /// Counts from 1 within the session.
    quint64 taskIdentifier() const { return m_identifier; }
    /// Differs between any two tasks of the process that live at the same time.
    std::size_t hash() const;

protected:
    URLSessionTask(std::weak_ptr<URLSession> session, URLRequest request, quint64 identifier);

private:
    friend class TaskRelay;
    enum class State { Suspended, Running, Cancelled, Completed };

    /// The last step, on the main thread: false when the task was cancelled meanwhile.
    bool complete();

    const std::weak_ptr<URLSession> m_session;
    const URLRequest m_request;
    const quint64 m_identifier;

    mutable std::mutex m_mutex;
    State m_state = State::Suspended;
    std::weak_ptr<Transfer> m_transfer;
};

/// The body of the answer arrives in memory, in one piece, at the end.
class TL_EXPORT URLSessionDataTask : public URLSessionTask
{
public:
    /// Body, head and error, in the platform's own order. Without an error, body and head are there; with one, they are
    /// not.
    using Completion =
        std::function<void(const std::optional<Data>& body, const std::optional<HTTPURLResponse>& response,
                           const std::optional<Error>& error)>;

private:
    friend class TaskRelay;
    friend class URLSession;

    URLSessionDataTask(std::weak_ptr<URLSession> session, URLRequest request, quint64 identifier,
                       Completion completion);

    /// Once; what the completion holds is released right after.
    void callCompletion(const Data& body, const std::optional<HTTPURLResponse>& response,
                        const std::optional<Error>& error);

    Completion m_completion;
};

/// The body of the answer arrives in a temporary file.
class TL_EXPORT URLSessionDownloadTask : public URLSessionTask
{
private:
    friend class URLSession;

    using URLSessionTask::URLSessionTask;
};

} // namespace platform
