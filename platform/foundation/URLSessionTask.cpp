#include "platform/foundation/URLSessionTask.h"

#include "platform/foundation/URLSession.h"
#include "platform/foundation/curl/TaskParts.h"

#include <utility>

namespace tljira {

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

} // namespace tljira
