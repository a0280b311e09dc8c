#pragma once

#include "platform/toolkit/windows/Window.h"

#include <vector>

namespace tljira {

/// The windows that go where one window goes.
class ChildWindows
{
public:
    explicit ChildWindows(Window& parent);
    ~ChildWindows();

    void add(const std::shared_ptr<Window>& child, Window::Ordered ordered);
    void remove(const std::shared_ptr<Window>& child);

    void parentVisibilityChanged(bool visible);
    void parentMoved(const QPoint& distance);

private:
    struct Entry
    {
        std::shared_ptr<Window> child;
        Window::Ordered ordered;
    };

    void show(const Entry& entry);

    Window& m_parent;
    std::vector<Entry> m_entries;
};

} // namespace tljira
