#pragma once

#include "platform/foundation/Export.h"

#include <functional>

namespace platform {

/// The operations that run on the main thread, one after another in the order in which they were added.
class TL_EXPORT MainQueue
{
public:
    static MainQueue& instance();

    /// Runs `operation` in a later turn of the main thread's event loop, never inside this call. From any thread; may
    /// be called before the application object exists, in which case the operation waits for it.
    void addOperation(std::function<void()> operation);

private:
    MainQueue() = default;
};

} // namespace platform
