#include "platform/toolkit/windows/InputGuard.h"

#include "platform/toolkit/views/TextInput.h"
#include "platform/toolkit/windows/WindowParts.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWindow>

namespace tljira {

namespace {

WindowWidget* windowOfReceiver(QObject* receiver)
{
    if (receiver->isWidgetType())
        return WindowFocus::windowAround(static_cast<QWidget*>(receiver));
    const auto* handle = qobject_cast<QWindow*>(receiver);
    return handle && handle->handle() ? dynamic_cast<WindowWidget*>(QWidget::find(handle->winId())) : nullptr;
}

/// Moving and writing may go on as long as a key is held; pressing something may not.
bool pressesSomething(const QKeyEvent& event, const QWidget& target)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return !isTextArea(target);
    case Qt::Key_Space:
        return !isTextField(target) && !isTextArea(target);
    case Qt::Key_Escape:
    case Qt::Key_Select:
        return true;
    default:
        return false;
    }
}

} // namespace

InputGuard& InputGuard::instance()
{
    static QPointer<InputGuard> guard;
    if (!guard)
        guard = new InputGuard(qApp);
    return *guard;
}

InputGuard::InputGuard(QObject* application)
    : QObject(application)
{
    application->installEventFilter(this);
    QObject::connect(qApp, &QApplication::focusChanged, this, &InputGuard::focusChanged);
}

bool InputGuard::eventFilter(QObject* receiver, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
        return isUnwanted(receiver, static_cast<QKeyEvent&>(*event));
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::EnabledChange:
        viewChanged(receiver);
        return false;
    default:
        return false;
    }
}

bool InputGuard::isUnwanted(QObject* receiver, QKeyEvent& event)
{
    // The window system gives each event to a window first, which hands it on to a view.
    const bool isNew = receiver->isWindowType();
    const bool meansNothing = isNew && m_keys.note(event);
    WindowWidget* const window = windowOfReceiver(receiver);
    if (!window)
        return false;
    QWidget* const focused = window->window()->focusWidget();
    QWidget& target = isNew ? (focused ? *focused : *window) : static_cast<QWidget&>(*receiver);
    if (event.type() == QEvent::ShortcutOverride) {
        // An accepted one is no shortcut.
        const bool isNoShortcut = meansNothing || m_keys.isRepeat(event);
        if (isNoShortcut)
            event.accept();
        return isNoShortcut;
    }
    return meansNothing || isUnwantedIn(target, event);
}

bool InputGuard::isUnwantedIn(QWidget& target, const QKeyEvent& event) const
{
    if (event.type() == QEvent::KeyPress && m_keys.isRepeat(event) && pressesSomething(event, target))
        return true;
    if (WindowFocus::isWithinReach(&target))
        return false;
    WindowFocus::windowAround(&target)->parts().focus.check();
    return true;
}

void InputGuard::viewChanged(QObject* receiver)
{
    if (!receiver->isWidgetType())
        return;
    WindowWidget* const window = WindowFocus::windowAround(static_cast<QWidget*>(receiver));
    if (!window || !window->window()->isVisible())
        return;
    const QWidget* const focused = window->window()->focusWidget();
    if (!focused || dynamic_cast<const WindowWidget*>(focused) || !WindowFocus::isWithinReach(focused))
        window->parts().focus.checkLater();
}

void InputGuard::focusChanged(QWidget* old, QWidget* now)
{
    if (WindowWidget* const window = WindowFocus::windowAround(now)) {
        window->parts().focus.remember(now);
        if (!WindowFocus::isWithinReach(now))
            window->parts().focus.checkLater();
    } else if (WindowWidget* const former = now ? nullptr : WindowFocus::windowAround(old)) {
        former->parts().focus.checkLater();
    }
}

} // namespace tljira
