#pragma once

#include "platform/foundation/GlobalQueue.h"

#include <future>
#include <latch>
#include <memory>

namespace tests {

/// Keeps every thread of the queue, as a disk that does not answer would, until it is let go.
class HeldGlobalQueue
{
public:
    HeldGlobalQueue()
    {
        const auto held = std::make_shared<std::latch>(tljira::GlobalQueue::mostThreads);
        for (std::size_t thread = 0; thread < tljira::GlobalQueue::mostThreads; ++thread) {
            tljira::GlobalQueue::instance().addOperation([held, freed = m_freed] {
                held->count_down();
                freed.wait();
            });
        }
        held->wait();
    }
    ~HeldGlobalQueue() { letGo(); }
    HeldGlobalQueue(const HeldGlobalQueue&) = delete;
    HeldGlobalQueue& operator=(const HeldGlobalQueue&) = delete;

    /// From any thread.
    void letGo()
    {
        std::call_once(m_once, [this] { m_free.set_value(); });
    }

private:
    std::once_flag m_once;
    std::promise<void> m_free;
    const std::shared_future<void> m_freed = m_free.get_future().share();
};

} // namespace tests
