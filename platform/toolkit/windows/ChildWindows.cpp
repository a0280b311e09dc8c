#include "platform/toolkit/windows/ChildWindows.h"

#include "platform/toolkit/windows/WindowParts.h"

#include <QWidget>
#include <QWindow>

namespace tljira {

ChildWindows::ChildWindows(Window& parent)
    : m_parent(parent)
{
}

ChildWindows::~ChildWindows()
{
    for (const Entry& entry : m_entries)
        entry.child->orderOut();
}

void ChildWindows::add(const std::shared_ptr<Window>& child, Window::Ordered ordered)
{
    if (const std::shared_ptr<Window> former = child->parentWindow())
        former->removeChildWindow(child);
    WindowParts::of(*child).parentWindow = m_parent.weak_from_this();
    m_entries.push_back({child, ordered});
    if (m_parent.isVisible())
        show(m_entries.back());
}

void ChildWindows::remove(const std::shared_ptr<Window>& child)
{
    if (child->parentWindow().get() != &m_parent)
        return;
    WindowParts::of(*child).parentWindow.reset();
    if (QWindow* handle = child->widget()->windowHandle())
        handle->setTransientParent(nullptr);
    std::erase_if(m_entries, [&](const Entry& entry) { return entry.child == child; });
}

void ChildWindows::show(const Entry& entry)
{
    if (!entry.child->contentView())
        return;
    QWidget* widget = entry.child->widget();
    widget->setAttribute(Qt::WA_ShowWithoutActivating);
    if (entry.ordered == Window::Ordered::Above) {
        widget->winId();
        widget->windowHandle()->setTransientParent(m_parent.widget()->windowHandle());
    }
    WindowParts::of(*entry.child).show();
    if (entry.ordered == Window::Ordered::Above)
        widget->raise();
    else
        m_parent.widget()->raise();
}

void ChildWindows::parentVisibilityChanged(bool visible)
{
    for (const Entry& entry : m_entries) {
        if (visible)
            show(entry);
        else
            entry.child->orderOut();
    }
}

void ChildWindows::parentMoved(const QPoint& distance)
{
    for (const Entry& entry : m_entries)
        WindowParts::of(*entry.child).moveBy(distance);
}

} // namespace tljira
