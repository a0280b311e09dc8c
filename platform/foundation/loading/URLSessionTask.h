#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/loading/HTTPURLResponse.h"
#include "platform/foundation/loading/URLRequest.h"
#include "platform/foundation/values/Data.h"

#include <functional>
#include <memory>
#include <optional>

namespace tljira {

class URLSession;

/// One request under way. Made by a URLSession; a task that nobody holds goes on all the same. Once its
/// session is gone it does nothing any more.
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
    /// Its end was reported, or is being reported, or never will be because its session is gone. A task that was
    /// cancelled has not ended before it has reported so.
    bool hasEnded() const;

    /// As it was when the task was made; redirects do not change it.
    const URLRequest& originalRequest() const;
    /// Counts from 1 within the session.
    quint64 taskIdentifier() const;
    /// Differs between any two tasks of the process that live at the same time.
    std::size_t hash() const;

private:
    friend class URLSession;
    friend class URLSessionDataTask;
    friend class URLSessionDownloadTask;

    class Parts;
    explicit URLSessionTask(std::unique_ptr<Parts> parts);

    const std::unique_ptr<Parts> m_parts;
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
    friend class URLSession;

    using URLSessionTask::URLSessionTask;
};

/// The body of the answer arrives in a temporary file.
class TL_EXPORT URLSessionDownloadTask : public URLSessionTask
{
private:
    friend class URLSession;

    using URLSessionTask::URLSessionTask;
};

} // namespace tljira
