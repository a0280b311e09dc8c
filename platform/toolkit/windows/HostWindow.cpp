#include "platform/toolkit/windows/HostWindow.h"

#include "platform/toolkit/windows/ModalRuns.h"
#include "platform/toolkit/windows/Window.h"

#include <QApplication>
#include <QWindow>

namespace tljira {

namespace {

QPointer<QWidget>& lastKeyWindow()
{
    static QPointer<QWidget> window;
    return window;
}

/// A window may stand inside another one, and a dialog belongs to the outermost.
QWindow* topLevel(QWindow* window)
{
    while (window && window->parent())
        window = window->parent();
    return window;
}

QWindow* ownerOfWhatComesNow(const QWidget* newcomer)
{
    const QWidget* const active = QApplication::activeWindow();
    // A window without widgets, such as one of QML, is no active window in the eyes of QApplication.
    QWindow* owner = active ? active->windowHandle() : topLevel(QGuiApplication::focusWindow());
    if (owner == newcomer->windowHandle() || (owner && !owner->isVisible()))
        owner = nullptr;
    while (owner && owner->transientParent())
        owner = owner->transientParent();
    const bool isOurs = owner && Window::windowOf(QWidget::find(owner->winId()));
    return isOurs ? nullptr : owner;
}

QWindow* windowAround(QObject* part)
{
    for (; part; part = part->parent()) {
        QWindow* window = nullptr;
        if (const auto* view = qobject_cast<QWidget*>(part))
            window = view->window()->windowHandle();
        else
            window = topLevel(qobject_cast<QWindow*>(part));
        if (window)
            return window->isVisible() ? window : nullptr;
    }
    return nullptr;
}

} // namespace

void HostWindow::adopt()
{
    QObject::disconnect(m_departure);
    m_window->winId();
    QWindow* const handle = m_window->windowHandle();
    QWindow* const asked = windowAround(m_part);
    QWindow* const owner = asked ? asked : ownerOfWhatComesNow(m_window);
    handle->setTransientParent(owner);
    if (!owner)
        return;
    m_departure = QObject::connect(owner, &QWindow::visibleChanged, handle, [handle](bool isVisible) {
        if (!isVisible)
            handle->setTransientParent(nullptr);
    });
}

QWidget* dialogParent()
{
    if (QWidget* active = QApplication::activeWindow())
        return active;
    if (const auto modal = ModalRuns::innermostWindow())
        return modal->widget()->window();
    QWidget* const last = lastKeyWindow();
    return last && last->isVisible() ? last->window() : nullptr;
}

void noteKeyWindow(QWidget* window)
{
    lastKeyWindow() = window;
}

} // namespace tljira
