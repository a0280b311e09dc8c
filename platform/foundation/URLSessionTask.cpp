#include "platform/foundation/URLSessionTask.h"

#include "platform/foundation/URLSession.h"
#include "platform/foundation/curl/Transfer.h"

#include <utility>

namespace platform {

URLSessionTask::URLSessionTask(std::weak_ptr<URLSession> session, URLRequest request, quint64 identifier)
    : m_session(std::move(session))
    , m_request(std::move(request))
    , m_identifier(identifier)
{
}

URLSessionTask::~URLSessionTask() = default;

void URLSessionTask::resume()
{
    const std::shared_ptr<URLSession> session = m_session.lock();
    const std::lock_guard lock(m_mutex);
    if (!session || m_state != State::Suspended)
        return;
    m_state = State::Running;
    m_transfer = session->start(shared_from_this());
}

void URLSessionTask::cancel()
{
    const std::shared_ptr<URLSession> session = m_session.lock();
    const std::lock_guard lock(m_mutex);
    if (!session || m_state == State::Cancelled || m_state == State::Completed)
        return;
    if (std::exchange(m_state, State::Cancelled) == State::Suspended)
        session->endUnstarted(shared_from_this());
    else if (const std::shared_ptr<Transfer> transfer = m_transfer.lock())
        session->cancel(transfer);
}

bool URLSessionTask::isRunning() const
{
    const std::lock_guard lock(m_mutex);
    return m_state == State::Running;
}

bool URLSessionTask::complete()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_state, State::Completed) != State::Cancelled;
}

std::size_t URLSessionTask::hash() const
{
    return std::hash<const URLSessionTask*>()(this);
}

URLSessionDataTask::URLSessionDataTask(std::weak_ptr<URLSession> session, URLRequest request, quint64 identifier,
                                       Completion completion)
    : URLSessionTask(std::move(session), std::move(request), identifier)
    , m_completion(std::move(completion))
{
}

void URLSessionDataTask::callCompletion(const Data& body, const std::optional<HTTPURLResponse>& response,
                                        const std::optional<Error>& error)
{
    const Completion completion = std::exchange(m_completion, nullptr);
    if (completion)
        completion(error ? std::nullopt : std::optional(body), response, error);
}

} // namespace platform
