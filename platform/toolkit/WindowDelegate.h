#pragma once

#include "platform/foundation/Export.h"

namespace platform {

class Window;

/// All calls on the main thread.
class TL_EXPORT WindowDelegate
{
public:
    virtual ~WindowDelegate() = default;

    /// Once each time the window closes, by its user or by close(), while it is still on screen.
    virtual void windowWillClose(Window&) {}
    virtual void windowDidBecomeKey(Window&) {}
    virtual void windowDidResignKey(Window&) {}
};

} // namespace platform
