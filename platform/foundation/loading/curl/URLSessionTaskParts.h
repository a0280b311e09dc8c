#pragma once

#include "platform/foundation/loading/URLSessionDelegate.h"
#include "platform/foundation/loading/URLSessionTask.h"
#include "platform/foundation/loading/curl/TransferObserver.h"

#include <atomic>
#include <memory>
#include <mutex>

namespace tljira {

class Transfer;

/// The inside of a task: how far it is, and the way of what the network thread learns of it to the main thread, where
/// the delegate and the completion are called. Progress does not queue up: while a report waits for the main thread,
/// newer figures replace the older ones.
class URLSessionTask::Parts : public TransferObserver
{
public:
    enum class Kind { Data, Download };
    enum class Step { Suspended, Running, Cancelled, Completed };

    Parts(std::weak_ptr<URLSession> owner, Kind what, URLRequest original, quint64 number,
          URLSessionDataTask::Completion atEnd = nullptr);

    /// What hears of the task's transfer. It keeps task and delegate alive until the end has been told.
    static std::shared_ptr<TransferObserver> beginDelivery(const std::shared_ptr<URLSessionTask>& task,
                                                           std::shared_ptr<URLSessionDelegate> delegate);

    bool isAt(Step which) const { return step == which; }
    bool hasEnded() const { return isAt(Step::Completed) || session.expired(); }

    void transferMoved(const TransferProgress& progress) override;
    void transferEnded(TransferResult result) override;

    const std::weak_ptr<URLSession> session;
    const Kind kind;
    const URLRequest request;
    const quint64 identifier;

    /// Around each change of the step, and around what follows up to what is the main thread's own.
    std::mutex mutex;
    std::atomic<Step> step = Step::Suspended;
    std::weak_ptr<Transfer> transfer;

private:
    void deliverProgress();
    void deliverEnd(TransferResult& result);
    void report(const TransferProgress& now);

    TransferProgress m_progress;
    bool m_isReportWaiting = false;

    // The main thread's own, once the delivery has begun.
    std::weak_ptr<URLSessionTask> m_task;
    std::weak_ptr<TransferObserver> m_observer;
    std::shared_ptr<URLSessionDelegate> m_delegate;
    URLSessionDataTask::Completion m_completion;
    TransferProgress m_reported;
};

} // namespace tljira
