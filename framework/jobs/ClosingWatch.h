#pragma once

#include "platform/toolkit/windows/Application.h"
#include "platform/toolkit/windows/WindowDelegate.h"

#include <functional>
#include <memory>

namespace jobs {

/// Hears when a window closes, in front of the window's own delegate.
class ClosingWatch : public tljira::WindowDelegate
{
public:
    ClosingWatch(std::weak_ptr<tljira::WindowDelegate> own, std::function<void()> closes)
        : m_own(std::move(own))
        , m_closes(std::move(closes))
    {
    }

    /// A controller whose window closes ends the innermost modal run: it does not hear of it while that is another
    /// window's.
    void windowWillClose(tljira::Window& window) override
    {
        const auto modal = tljira::Application::modalWindow();
        const auto own = m_own.lock();
        if (own && (!modal || modal.get() == &window))
            own->windowWillClose(window);
        m_closes();
    }
    void windowDidBecomeKey(tljira::Window& window) override
    {
        if (const auto own = m_own.lock())
            own->windowDidBecomeKey(window);
    }
    void windowDidResignKey(tljira::Window& window) override
    {
        if (const auto own = m_own.lock())
            own->windowDidResignKey(window);
    }

private:
    const std::weak_ptr<tljira::WindowDelegate> m_own;
    const std::function<void()> m_closes;
};

} // namespace jobs
