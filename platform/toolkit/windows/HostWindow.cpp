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

QWindow* ownerOfWhatComesNow(const QWidget* newcomer)
{
    const QWidget* const active = QApplication::activeWindow();
    QWindow* owner = active && active != newcomer ? active->windowHandle() : nullptr;
    while (owner && owner->transientParent())
        owner = owner->transientParent();
    const bool isOurs = owner && Window::windowOf(QWidget::find(owner->winId()));
    return isOurs ? nullptr : owner;
}

QWindow* windowAround(const QWidget* view)
{
    return view && view->window()->isVisible() ? view->window()->windowHandle() : nullptr;
}

} // namespace

void HostWindow::adopt()
{
    QObject::disconnect(m_departure);
    m_window->winId();
    QWindow* const handle = m_window->windowHandle();
    QWindow* const asked = windowAround(m_view);
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
