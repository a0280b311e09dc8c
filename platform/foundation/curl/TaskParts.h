#pragma once

#include "platform/foundation/URLSessionTask.h"

#include <memory>
#include <mutex>

namespace tljira {

class Transfer;

/// The inside of a task, which its session and its relay work with.
struct TaskParts
{
    enum class Step { Suspended, Running, Cancelled, Completed };

    TaskParts(std::weak_ptr<URLSession> owner, URLRequest original, quint64 number,
              URLSessionDataTask::Completion atEnd = nullptr);

    bool isRunning() const;
    bool hasEnded() const;

    /// The last step, on the main thread: false when the task was cancelled meanwhile.
    bool complete();

    /// Once; what the completion holds is released right after.
    void callCompletion(const Data& body, const std::optional<HTTPURLResponse>& response,
                        const std::optional<Error>& error);

    const std::weak_ptr<URLSession> session;
    const URLRequest request;
    const quint64 identifier;
    URLSessionDataTask::Completion completion;

    /// Around what follows.
    mutable std::mutex mutex;
    Step step = Step::Suspended;
    std::weak_ptr<Transfer> transfer;
};

struct URLSessionTask::Parts : TaskParts
{
    using TaskParts::TaskParts;
};

} // namespace tljira
