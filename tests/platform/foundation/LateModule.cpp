#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/MainQueue.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <semaphore>
#include <thread>

using tljira::GlobalQueue;
using tljira::MainQueue;

/// An operation that is under way when the application ends, and that asks for something on the main thread then.
extern "C" __attribute__((visibility("default"))) void beginOperation(bool (*isEnding)())
{
    const std::shared_ptr<void> document(nullptr, [](void*) { std::puts("released"); });
    static std::binary_semaphore hasBegun{0};
    GlobalQueue::instance().addOperation([document, isEnding] {
        hasBegun.release();
        while (!isEnding())
            std::this_thread::yield();
        // As a disk takes its time.
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        MainQueue::instance().addOperation([document] { std::puts("ran"); });
    });
    hasBegun.acquire();
}
