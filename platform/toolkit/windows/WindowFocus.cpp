#include "platform/toolkit/windows/WindowFocus.h"

#include "platform/toolkit/views/TextInput.h"
#include "platform/toolkit/windows/InputGuard.h"
#include "platform/toolkit/windows/WindowParts.h"

#include <QPushButton>

#include <functional>

namespace tljira {

namespace {

bool takesText(const QWidget* control)
{
    return isTextField(*control) || isTextArea(*control);
}

bool isDefaultButton(const QWidget* control)
{
    const auto* button = qobject_cast<const QPushButton*>(control);
    return button && button->isDefault();
}

WindowWidget& topLevelOf(const WindowWidget& window)
{
    return static_cast<WindowWidget&>(*window.window());
}

} // namespace

WindowFocus::WindowFocus(WindowParts& parts)
    : m_parts(parts)
{
}

WindowWidget* WindowFocus::windowAround(const QWidget* view)
{
    for (const QWidget* step = view; step; step = step->isWindow() ? nullptr : step->parentWidget()) {
        if (const auto* window = dynamic_cast<const WindowWidget*>(step))
            return const_cast<WindowWidget*>(window);
    }
    return nullptr;
}

WindowWidget* WindowFocus::uppermost(WindowWidget& window)
{
    WindowWidget* step = &window;
    while (WindowWidget* sheet = step->parts().sheetInside())
        step = sheet;
    return step;
}

bool WindowFocus::isCovered(const QWidget* view)
{
    const WindowWidget* window = windowAround(view);
    return window && window->parts().sheetInside();
}

bool WindowFocus::isWithinReach(const QWidget* view)
{
    return view->isVisible() && view->isEnabled() && !isCovered(view);
}

QWidget* WindowFocus::control() const
{
    QWidget* focused = m_parts.widget.window()->focusWidget();
    return focused != &m_parts.widget && windowAround(focused) == &m_parts.widget ? focused : nullptr;
}

QWidget* WindowFocus::best() const
{
    const auto canHaveIt = [this](const QWidget* control) {
        return control && windowAround(control) == &m_parts.widget && isWithinReach(control);
    };
    if (canHaveIt(m_last))
        return m_last;
    if (canHaveIt(m_lastField) && takesText(m_lastField))
        return m_lastField;
    const auto first = [&](const std::function<bool(const QWidget*)>& condition) -> QWidget* {
        QWidget* step = m_parts.widget.nextInFocusChain();
        for (; step != &m_parts.widget; step = step->nextInFocusChain()) {
            if ((step->focusPolicy() & Qt::TabFocus) && canHaveIt(step) && condition(step))
                return step;
        }
        return nullptr;
    };
    if (QWidget* field = first(takesText))
        return field;
    if (QWidget* button = first(isDefaultButton))
        return button;
    return first([](const QWidget*) { return true; });
}

void WindowFocus::place(QWidget* control)
{
    m_placed = control;
    control->setFocus(isTextField(*control) ? Qt::TabFocusReason : Qt::OtherFocusReason);
    InputGuard::instance().forgetKeysThatAreDown();
}

void WindowFocus::check()
{
    WindowWidget& topLevel = topLevelOf(m_parts.widget);
    WindowWidget* const shown = uppermost(topLevel);
    QWidget* const focused = topLevel.focusWidget();
    const bool isThere = focused && windowAround(focused) == shown;
    if (!topLevel.isVisible() || (isThere && focused != shown && isWithinReach(focused)))
        return;
    WindowFocus& focus = shown->parts().focus;
    QWidget* const next = focus.best();
    if (next)
        focus.place(next);
    else if (focused != shown)
        focus.place(shown);
}

void WindowFocus::checkLater()
{
    WindowWidget& topLevel = topLevelOf(m_parts.widget);
    WindowFocus& focus = topLevel.parts().focus;
    if (std::exchange(focus.m_isCheckUnderWay, true))
        return;
    QMetaObject::invokeMethod(
        &topLevel,
        [&focus] {
            focus.m_isCheckUnderWay = false;
            focus.check();
        },
        Qt::QueuedConnection);
}

void WindowFocus::remember(QWidget* control)
{
    if (control == &m_parts.widget)
        return;
    if (m_placed != control)
        m_placed = nullptr;
    m_last = control;
    if (takesText(control))
        m_lastField = control;
}

void WindowFocus::rememberCurrent()
{
    if (QWidget* current = control())
        remember(current);
}

void WindowFocus::forget()
{
    m_last = nullptr;
    m_lastField = nullptr;
    m_placed = nullptr;
}

} // namespace tljira
