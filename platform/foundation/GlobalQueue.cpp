#include "platform/foundation/GlobalQueue.h"

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/ProcessExit.h"

#include <QCoreApplication>

#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

namespace tljira {

namespace {

constexpr auto idleTime = std::chrono::seconds(30);
/// Enough for what is not stuck. What is, may go on until the system takes the process down.
constexpr auto longestFarewell = std::chrono::milliseconds(250);

} // namespace

/// When operations are of no use any more.
class GlobalQueueEnding
{
public:
    static void followApplication()
    {
        // The main queue ends with the application too, but ahead of this where a running application loads the
        // library: what operations have asked of it since is dropped here.
        qAddPostRoutine([] {
            GlobalQueue::instance().settle(false);
            MainQueue::instance().close();
        });
    }
    static void followProcess()
    {
        whenProcessExits([] {
            GlobalQueue::instance().settle(true);
            MainQueue::instance().dropWhatNobodyRuns();
        });
    }
};

GlobalQueue& GlobalQueue::instance()
{
    // Never destroyed: its threads may still run while the process exits.
    static GlobalQueue& queue = []() -> GlobalQueue& {
        GlobalQueueEnding::followProcess();
        return *new GlobalQueue;
    }();
    return queue;
}

void GlobalQueue::addOperation(std::function<void()> operation)
{
    const std::lock_guard lock(m_mutex);
    if (m_isClosed)
        return;
    m_operations.push_back(std::move(operation));
    if (m_operations.size() <= m_idleThreads) {
        m_hasWork.notify_one();
        return;
    }
    if (m_threads == mostThreads || startThread() || m_threads > 0)
        return;
    MainQueue::instance().addOperation(std::move(m_operations.back()));
    m_operations.pop_back();
}

bool GlobalQueue::startThread()
{
    try {
        std::thread([this] { run(); }).detach();
        ++m_threads;
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

void GlobalQueue::run()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        ++m_idleThreads;
        m_hasEnded.notify_all();
        const bool isAwaited =
            m_hasWork.wait_for(lock, idleTime, [this] { return m_isClosed || !m_operations.empty(); });
        --m_idleThreads;
        if (!isAwaited || m_isClosed)
            break;
        std::function<void()> operation = std::move(m_operations.front());
        m_operations.pop_front();
        lock.unlock();
        operation();
        operation = nullptr;
        lock.lock();
    }
    --m_threads;
    m_hasEnded.notify_all();
}

void GlobalQueue::settle(bool isForGood)
{
    std::deque<std::function<void()>> dropped; // Outlives the lock: what it holds may add operations as it goes.
    std::unique_lock lock(m_mutex);
    dropped.swap(m_operations);
    m_isClosed |= isForGood;
    m_hasWork.notify_all();
    m_hasEnded.wait_for(lock, longestFarewell, [&] { return m_threads == (isForGood ? 0 : m_idleThreads); });
}

namespace {

void followApplication()
{
    GlobalQueueEnding::followApplication();
}

Q_COREAPP_STARTUP_FUNCTION(followApplication)

} // namespace

} // namespace tljira
