#include "platform/foundation/loading/curl/CommandQueue.h"

#include <utility>

namespace tljira {

CommandQueue::CommandQueue(CURLM* multi)
    : m_multi(multi)
{
}

void CommandQueue::post(Command command)
{
    const std::lock_guard lock(m_mutex);
    if (!m_multi)
        return;
    m_commands.push_back(std::move(command));
    m_hasCommand.notify_one();
    if (m_isWaiting)
        curl_multi_wakeup(m_multi);
}

void CommandQueue::stop()
{
    const std::lock_guard lock(m_mutex);
    m_isStopped = true;
    m_hasCommand.notify_one();
    if (m_isWaiting)
        curl_multi_wakeup(m_multi);
}

void CommandQueue::close()
{
    std::vector<Command> left;
    const std::lock_guard lock(m_mutex);
    m_multi = nullptr;
    left.swap(m_commands);
}

bool CommandQueue::isStopped() const
{
    const std::lock_guard lock(m_mutex);
    return m_isStopped;
}

std::vector<CommandQueue::Command> CommandQueue::take()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_commands, {});
}

void CommandQueue::wait()
{
    std::unique_lock lock(m_mutex);
    m_hasCommand.wait(lock, [this] { return m_isStopped || !m_commands.empty(); });
}

bool CommandQueue::beginWait()
{
    const std::lock_guard lock(m_mutex);
    m_isWaiting = !m_isStopped && m_commands.empty();
    return m_isWaiting;
}

void CommandQueue::endWait()
{
    const std::lock_guard lock(m_mutex);
    m_isWaiting = false;
}

} // namespace tljira
