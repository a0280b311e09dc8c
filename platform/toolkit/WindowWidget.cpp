#include "platform/toolkit/WindowWidget.h"

#include "platform/toolkit/Retained.h"
#include "platform/toolkit/WindowParts.h"

#include <QChildEvent>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>

#include <algorithm>

namespace tljira {

namespace {

template <class Button, class Condition>
bool clickFirst(const QWidget& window, Condition condition)
{
    const QList<Button*> buttons = window.findChildren<Button*>();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const Button* button) {
        return button->isVisible() && button->isEnabled() && condition(*button);
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

bool WindowWidget::clickCancelButton()
{
    return clickFirst<QAbstractButton>(
        *this, [](const QAbstractButton& button) { return button.shortcut() == QKeySequence(Qt::Key_Escape); });
}

bool WindowWidget::clickDefaultButton()
{
    if (auto* focused = qobject_cast<QPushButton*>(focusWidget())) {
        focused->click();
        return true;
    }
    return clickFirst<QPushButton>(*this, [](const QPushButton& button) { return button.isDefault(); });
}

bool WindowWidget::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate)
        m_parts.keyChanged(event->type() == QEvent::WindowActivate);
    else if (event->type() == QEvent::LayoutRequest)
        m_parts.contentWantsLayout();
    return QWidget::event(event);
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
    if (!handled)
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
