#include "platform/foundation/GlobalQueue.h"

#include <QThreadPool>

#include <utility>

namespace tljira {

GlobalQueue& GlobalQueue::instance()
{
    // Never destroyed: threads of the pool may still run while the process exits.
    static GlobalQueue& queue = *new GlobalQueue;
    return queue;
}

void GlobalQueue::addOperation(std::function<void()> operation)
{
    {
        const std::lock_guard lock(m_mutex);
        m_operations.push_back(std::move(operation));
    }
    QThreadPool::globalInstance()->start([] { instance().runNext(); });
}

void GlobalQueue::runNext()
{
    std::function<void()> operation;
    {
        const std::lock_guard lock(m_mutex);
        if (m_operations.empty())
            return;
        operation = std::move(m_operations.front());
        m_operations.pop_front();
    }
    operation();
}

} // namespace tljira
