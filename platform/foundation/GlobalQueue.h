#pragma once

#include "platform/foundation/Export.h"

#include <deque>
#include <functional>
#include <mutex>

namespace tljira {

/// Operations for which the main thread should not wait. They run on Qt's global thread pool, in any order and side by
/// side. What is handed over lies under a lock of ours, which a thread sanitizer can see; the pool's own it cannot.
class TL_EXPORT GlobalQueue
{
public:
    static GlobalQueue& instance();

    /// Runs `operation` on another thread and releases it there. From any thread.
    void addOperation(std::function<void()> operation);

    GlobalQueue(const GlobalQueue&) = delete;
    GlobalQueue& operator=(const GlobalQueue&) = delete;

private:
    GlobalQueue() = default;
    void runNext();

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_operations;
};

} // namespace tljira
