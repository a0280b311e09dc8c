#include "platform/foundation/curl/TaskRelay.h"

#include "platform/foundation/MainQueue.h"

#include <utility>

namespace tljira {

namespace {

/// Bytes since the last report; a redirect that repeats a body starts its count anew.
qint64 increment(qint64 now, qint64 reported)
{
    return now >= reported ? now - reported : now;
}

} // namespace

TaskRelay::TaskRelay(std::shared_ptr<URLSessionTask> task, TaskParts& parts, std::weak_ptr<URLSession> session,
                     std::shared_ptr<URLSessionDelegate> delegate)
    : m_task(std::move(task))
    , m_parts(parts)
    , m_session(std::move(session))
    , m_delegate(std::move(delegate))
{
}

/// Dropped without an end, with its session. That may be on the network thread, where a client that goes would wait for
/// that very thread.
TaskRelay::~TaskRelay()
{
    if (m_task || m_delegate)
        MainQueue::instance().addOperation([task = std::move(m_task), delegate = std::move(m_delegate)] {});
}

void TaskRelay::transferMoved(const TransferProgress& progress)
{
    {
        const std::lock_guard lock(m_mutex);
        m_progress = progress;
        if (std::exchange(m_isReportWaiting, true))
            return;
    }
    MainQueue::instance().addOperation([self = shared_from_this()] { self->deliverProgress(); });
}

void TaskRelay::transferEnded(TransferResult result)
{
    MainQueue::instance().addOperation(
        [self = shared_from_this(), result = std::move(result)]() mutable { self->deliverEnd(result); });
}

void TaskRelay::deliverProgress()
{
    if (m_delegate && m_task && m_task->isRunning() && !m_session.expired())
        reportNews(*m_delegate);
}

void TaskRelay::reportNews(URLSessionDelegate& delegate)
{
    TransferProgress now;
    {
        const std::lock_guard lock(m_mutex);
        now = m_progress;
        m_isReportWaiting = false;
    }
    const TransferProgress before = std::exchange(m_reported, now);
    if (now.sent != before.sent && now.sent > 0)
        delegate.didSendBodyData(m_task, increment(now.sent, before.sent), now.sent, now.expectedToSend);
    const auto download = std::dynamic_pointer_cast<URLSessionDownloadTask>(m_task);
    if (download && m_task->isRunning() && now.written != before.written && now.written > 0)
        delegate.didWriteData(download, increment(now.written, before.written), now.written, now.expectedToWrite);
}

void TaskRelay::deliverEnd(TransferResult& result)
{
    const std::shared_ptr<URLSessionTask> task = std::exchange(m_task, nullptr);
    const std::shared_ptr<URLSessionDelegate> delegate = std::exchange(m_delegate, nullptr);
    if (m_session.expired())
        return;
    if (!m_parts.complete())
        result = {makeURLError(URLError::Cancelled), std::nullopt, Data(), nullptr};

    const auto download = std::dynamic_pointer_cast<URLSessionDownloadTask>(task);
    if (delegate && download && !result.error)
        delegate->didFinishDownloadingToURL(download, result.file->path());
    m_parts.callCompletion(result.body, result.response, result.error);
    if (delegate)
        delegate->didCompleteWithError(task, result.error);
}

} // namespace tljira
