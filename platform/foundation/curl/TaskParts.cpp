#include "platform/foundation/curl/TaskParts.h"

#include <utility>

namespace tljira {

TaskParts::TaskParts(std::weak_ptr<URLSession> owner, URLRequest original, quint64 number,
                     URLSessionDataTask::Completion atEnd)
    : session(std::move(owner))
    , request(std::move(original))
    , identifier(number)
    , completion(std::move(atEnd))
{
}

bool TaskParts::isRunning() const
{
    const std::lock_guard lock(mutex);
    return step == Step::Running;
}

bool TaskParts::hasEnded() const
{
    const std::lock_guard lock(mutex);
    return step == Step::Completed || session.expired();
}

bool TaskParts::complete()
{
    const std::lock_guard lock(mutex);
    return std::exchange(step, Step::Completed) != Step::Cancelled;
}

void TaskParts::callCompletion(const Data& body, const std::optional<HTTPURLResponse>& response,
                               const std::optional<Error>& error)
{
    const auto call = std::exchange(completion, nullptr);
    if (call)
        call(error ? std::nullopt : std::optional(body), response, error);
}

} // namespace tljira
