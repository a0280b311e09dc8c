#include "platform/toolkit/windows/WindowWidget.h"

#include "platform/toolkit/windows/Retained.h"
#include "platform/toolkit/windows/WindowParts.h"

#include <QChildEvent>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>

#include <algorithm>

namespace tljira {

namespace {

template <class Button, class Condition>
bool clickFirst(const WindowWidget& window, Condition condition)
{
    const QList<Button*> buttons = window.findChildren<Button*>();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const Button* button) {
        return WindowFocus::windowAround(button) == &window && WindowFocus::isWithinReach(button) && condition(*button);
    });
    if (found == buttons.end())
        return false;
    (*found)->click();
    return true;
}

} // namespace

WindowWidget::WindowWidget(WindowParts& parts)
    : m_parts(parts)
{
}

void WindowWidget::giveUpSystemWindow()
{
    if (testAttribute(Qt::WA_WState_Created))
        destroy();
    // Whoever has asked for its number has set this.
    setAttribute(Qt::WA_NativeWindow, false);
}

bool WindowWidget::clickCancelButton()
{
    return clickFirst<QAbstractButton>(
        *this, [](const QAbstractButton& button) { return button.shortcut() == QKeySequence(Qt::Key_Escape); });
}

bool WindowWidget::clickDefaultButton()
{
    auto* const focused = qobject_cast<QPushButton*>(m_parts.focus.control());
    if (focused && WindowFocus::isWithinReach(focused) && !m_parts.focus.isPlaced(focused)) {
        focused->click();
        return true;
    }
    return clickFirst<QPushButton>(*this, [](const QPushButton& button) { return button.isDefault(); });
}

bool WindowWidget::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate)
        m_parts.keyChanged();
    else if (event->type() == QEvent::LayoutRequest)
        m_parts.contentWantsLayout();
    else if (event->type() == QEvent::FontChange)
        m_parts.fontChanged();
    return QWidget::event(event);
}

// Qt calls this for Tab, and also when the control that has the keyboard is hidden or disabled. Then the next one in
// the order of Tab is not the best, and what is hidden may be shown again at once.
bool WindowWidget::focusNextPrevChild(bool next)
{
    const QWidget* const focused = window()->focusWidget();
    if (!focused || WindowFocus::isWithinReach(focused))
        return QWidget::focusNextPrevChild(next);
    m_parts.focus.checkLater();
    return true;
}

void WindowWidget::childEvent(QChildEvent* event)
{
    QWidget::childEvent(event);
    if (event->removed())
        m_parts.contentLeft(event->child());
}

void WindowWidget::closeEvent(QCloseEvent* event)
{
    const std::shared_ptr<Window> kept = m_parts.window.shared_from_this();
    event->setAccepted(m_parts.userWantsToClose());
    retainUntilNextTurn(kept);
}

void WindowWidget::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool handled = (isReturn && clickDefaultButton()) || (event->key() == Qt::Key_Escape && clickCancelButton());
    // What a sheet has no use for is not for the window below it either.
    if (!handled && isWindow())
        QWidget::keyPressEvent(event);
}

void WindowWidget::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    m_parts.geometryChanged();
}

void WindowWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_parts.geometryChanged();
}

void WindowWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        m_parts.visibilityChanged(true);
}

void WindowWidget::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        m_parts.visibilityChanged(false);
}

} // namespace tljira
