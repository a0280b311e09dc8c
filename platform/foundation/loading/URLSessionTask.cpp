#include "platform/foundation/loading/URLSessionTask.h"

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/loading/URLSession.h"
#include "platform/foundation/loading/curl/URLSessionTaskParts.h"

#include <utility>

namespace tljira {

namespace {

/// Bytes since the last report; a redirect that repeats a body starts its count anew.
qint64 increment(qint64 now, qint64 reported)
{
    return now >= reported ? now - reported : now;
}

} // namespace

URLSessionTask::URLSessionTask(std::unique_ptr<Parts> parts)
    : m_parts(std::move(parts))
{
}

URLSessionTask::~URLSessionTask() = default;

void URLSessionTask::resume()
{
    const std::shared_ptr<URLSession> session = m_parts->session.lock();
    const std::lock_guard lock(m_parts->mutex);
    if (!session || m_parts->step != Parts::Step::Suspended)
        return;
    m_parts->step = Parts::Step::Running;
    session->start(shared_from_this());
}

void URLSessionTask::cancel()
{
    const std::shared_ptr<URLSession> session = m_parts->session.lock();
    const std::lock_guard lock(m_parts->mutex);
    if (!session || m_parts->step == Parts::Step::Cancelled || m_parts->step == Parts::Step::Completed)
        return;
    if (m_parts->step.exchange(Parts::Step::Cancelled) == Parts::Step::Suspended)
        session->endUnstarted(shared_from_this());
    else
        session->cancel(*this);
}

bool URLSessionTask::isRunning() const
{
    return m_parts->isAt(Parts::Step::Running);
}

bool URLSessionTask::hasEnded() const
{
    return m_parts->hasEnded();
}

const URLRequest& URLSessionTask::originalRequest() const
{
    return m_parts->request;
}

quint64 URLSessionTask::taskIdentifier() const
{
    return m_parts->identifier;
}

std::size_t URLSessionTask::hash() const
{
    return std::hash<const URLSessionTask*>()(this);
}

URLSessionTask::Parts::Parts(std::weak_ptr<URLSession> owner, Kind what, URLRequest original, quint64 number,
                             URLSessionDataTask::Completion atEnd)
    : session(std::move(owner))
    , kind(what)
    , request(std::move(original))
    , identifier(number)
    , m_completion(std::move(atEnd))
{
}

std::shared_ptr<TransferObserver> URLSessionTask::Parts::beginDelivery(const std::shared_ptr<URLSessionTask>& task,
                                                                       std::shared_ptr<URLSessionDelegate> delegate)
{
    Parts* const parts = task->m_parts.get();
    // Without an end it is dropped with its session. That may be on the network thread, where a client that goes would
    // wait for that very thread.
    const auto letGo = [task = task](Parts* dropped) mutable {
        auto held = std::exchange(task, nullptr);
        if (!dropped->isAt(Step::Completed)) {
            MainQueue::instance().addOperation([held = std::move(held), delegate = std::move(dropped->m_delegate)] {});
        }
    };
    const std::shared_ptr<TransferObserver> observer(parts, letGo);
    parts->m_task = task;
    parts->m_observer = observer;
    parts->m_delegate = std::move(delegate);
    return observer;
}

void URLSessionTask::Parts::transferMoved(const TransferProgress& progress)
{
    {
        const std::lock_guard lock(mutex);
        m_progress = progress;
        if (std::exchange(m_isReportWaiting, true))
            return;
    }
    MainQueue::instance().addOperation([this, keptAlive = m_observer.lock()] { deliverProgress(); });
}

void URLSessionTask::Parts::transferEnded(TransferResult result)
{
    MainQueue::instance().addOperation(
        [this, keptAlive = m_observer.lock(), result = std::move(result)]() mutable { deliverEnd(result); });
}

void URLSessionTask::Parts::deliverProgress()
{
    TransferProgress now;
    {
        const std::lock_guard lock(mutex);
        if (step != Step::Running)
            return;
        now = m_progress;
        m_isReportWaiting = false;
    }
    if (m_delegate && !session.expired())
        report(now);
}

void URLSessionTask::Parts::report(const TransferProgress& now)
{
    // The delegate may end the task.
    const std::shared_ptr<URLSessionTask> task = m_task.lock();
    const std::shared_ptr<URLSessionDelegate> delegate = m_delegate;
    const TransferProgress before = std::exchange(m_reported, now);
    if (now.sent != before.sent && now.sent > 0)
        delegate->didSendBodyData(task, increment(now.sent, before.sent), now.sent, now.expectedToSend);
    if (kind == Kind::Download && isAt(Step::Running) && now.written != before.written && now.written > 0) {
        delegate->didWriteData(std::static_pointer_cast<URLSessionDownloadTask>(task),
                               increment(now.written, before.written), now.written, now.expectedToWrite);
    }
}

void URLSessionTask::Parts::deliverEnd(TransferResult& result)
{
    const std::shared_ptr<URLSessionTask> task = m_task.lock();
    const std::shared_ptr<URLSessionDelegate> delegate = std::exchange(m_delegate, nullptr);
    {
        const std::lock_guard lock(mutex);
        if (step.exchange(Step::Completed) == Step::Cancelled)
            result = {makeURLError(URLError::Cancelled), std::nullopt, Data(), nullptr};
    }
    if (session.expired())
        return;

    if (delegate && kind == Kind::Download && !result.error) {
        delegate->didFinishDownloadingToURL(std::static_pointer_cast<URLSessionDownloadTask>(task),
                                            result.file->path());
    }
    // What it holds is released before the delegate hears.
    if (const auto completion = std::exchange(m_completion, nullptr))
        completion(result.error ? std::nullopt : std::optional(result.body), result.response, result.error);
    if (delegate)
        delegate->didCompleteWithError(task, result.error);
}

} // namespace tljira
