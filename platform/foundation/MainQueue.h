#pragma once

#include "platform/foundation/Export.h"

#include <deque>
#include <functional>
#include <mutex>

class QObject;

namespace tljira {

/// The operations that run on the main thread, one after another in the order in which they were added. An operation
/// that runs an event loop of its own lets those behind it run meanwhile.
class TL_EXPORT MainQueue
{
public:
    static MainQueue& instance();

    /// Runs `operation` in a later turn of the main thread's event loop, never inside this call, and releases it right
    /// after. From any thread; may be called before the application object exists, in which case the operation waits
    /// for it. What has not run when the application object is destroyed is dropped.
    void addOperation(std::function<void()> operation);

    MainQueue(const MainQueue&) = delete;
    MainQueue& operator=(const MainQueue&) = delete;

private:
    friend class GlobalQueueEnding;
    friend class MainQueueReceiver;

    MainQueue() = default;
    void open();
    void close();
    /// Operations that were added after the last application had gone, say by a thread that a disk had kept.
    void dropWhatNobodyRuns();
    void runNext();

    std::mutex m_mutex;
    std::deque<std::function<void()>> m_operations;
    QObject* m_receiver = nullptr;
};

} // namespace tljira
