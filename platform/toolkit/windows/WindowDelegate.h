#pragma once

#include "platform/foundation/Export.h"

namespace tljira {

class Window;

/// Whoever wants to know what becomes of a window. All calls on the main thread.
class TL_EXPORT WindowDelegate
{
public:
    virtual ~WindowDelegate() = default;

    /// Once each time the window closes, by its user or by close(), while it is still on screen.
    virtual void windowWillClose(Window&) {}
    ///@{
    /// The window has got, or lost, the keyboard.
    virtual void windowDidBecomeKey(Window&) {}
    virtual void windowDidResignKey(Window&) {}
    ///@}
};

} // namespace tljira
