#pragma once

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

    void windowWillClose(tljira::Window& window) override
    {
        if (const auto own = m_own.lock())
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
