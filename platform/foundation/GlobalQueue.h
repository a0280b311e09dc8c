#pragma once

#include "platform/foundation/Export.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>

namespace tljira {

/// Operations for which the main thread should not wait, such as those that a slow disk may keep for long. They run on
/// threads of the queue's own, in any order and side by side: Qt's painting waits for Qt's thread pool, so nothing that
/// may get stuck belongs there.
class TL_EXPORT GlobalQueue
{
public:
    /// So many operations run side by side; further ones wait.
    static constexpr std::size_t mostThreads = 32;

    static GlobalQueue& instance();

    /// Runs `operation` on another thread and releases it there. From any thread. Operations that have not begun when
    /// the application object goes or the process exits are dropped; those under way are waited for, but not for long.
    /// Where the system has no thread to give, the operation runs on the main thread later.
    void addOperation(std::function<void()> operation);

    GlobalQueue(const GlobalQueue&) = delete;
    GlobalQueue& operator=(const GlobalQueue&) = delete;

private:
    friend class GlobalQueueEnding;

    GlobalQueue() = default;
    bool startThread();
    void run();
    void settle(bool isForGood);

    std::mutex m_mutex;
    std::condition_variable m_hasWork;
    std::condition_variable m_hasEnded;
    std::deque<std::function<void()>> m_operations;
    std::size_t m_threads = 0;
    std::size_t m_idleThreads = 0;
    bool m_isClosed = false;
};

} // namespace tljira
