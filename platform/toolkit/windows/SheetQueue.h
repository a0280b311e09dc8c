#pragma once

#include "platform/toolkit/windows/Window.h"

#include <deque>

namespace tljira {

/// The sheets of one window: the first is up whenever the window is on screen, the others wait.
class SheetQueue
{
public:
    explicit SheetQueue(Window& parent);

    void begin(const std::shared_ptr<Window>& sheet, Window::SheetCompletion completion);
    void end(const std::shared_ptr<Window>& sheet, int returnCode);
    void endAll(int returnCode);
    /// All sheets are windows of their own again; their completions never run.
    void letGo();

    std::shared_ptr<Window> attached() const;

    void parentVisibilityChanged(bool visible);
    void parentMoved(const QPoint& distance);

private:
    struct Entry
    {
        std::shared_ptr<Window> sheet;
        Window::SheetCompletion completion;
    };

    void presentNext();

    Window& m_parent;
    std::deque<Entry> m_entries;
    bool m_isFirstUp = false;
    int m_running = 0; ///< completions under way; nothing new comes up before they are through
};

} // namespace tljira
