#pragma once

#include "platform/foundation/URLSession.h"
#include "platform/foundation/curl/TaskParts.h"
#include "platform/foundation/curl/TransferObserver.h"

#include <memory>
#include <mutex>

namespace tljira {

/// Carries what the network thread learns of one task over to the main thread, and calls the delegate and the
/// completion there. Progress does not queue up: while a report waits for the main thread, newer figures replace the
/// older ones. It keeps task and delegate alive until the end has been told, and lets them go on the main thread.
class TaskRelay : public TransferObserver, public std::enable_shared_from_this<TaskRelay>
{
public:
    /// `parts` are those of the task.
    TaskRelay(std::shared_ptr<URLSessionTask> task, TaskParts& parts, std::weak_ptr<URLSession> session,
              std::shared_ptr<URLSessionDelegate> delegate);
    ~TaskRelay() override;
    TaskRelay(const TaskRelay&) = delete;
    TaskRelay& operator=(const TaskRelay&) = delete;

    void transferMoved(const TransferProgress& progress) override;
    void transferEnded(TransferResult result) override;

private:
    void deliverProgress();
    void deliverEnd(TransferResult& result);
    void reportNews(URLSessionDelegate& delegate);

    std::shared_ptr<URLSessionTask> m_task;
    TaskParts& m_parts;
    const std::weak_ptr<URLSession> m_session;
    std::shared_ptr<URLSessionDelegate> m_delegate;

    std::mutex m_mutex;
    TransferProgress m_progress;
    bool m_isReportWaiting = false;

    // The main thread's own.
    TransferProgress m_reported;
};

} // namespace tljira
