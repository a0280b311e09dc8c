#include "platform/toolkit/ChildWindows.h"
#include "platform/toolkit/FrameAnimation.h"
#include "platform/toolkit/SheetQueue.h"
#include "platform/toolkit/View.h"
#include "platform/toolkit/WindowWidget.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace platform {

namespace {

std::optional<QMargins> pretendedDecorations;

QRect primaryScreen()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry() : QRect();
}

// The platform's y of a line is its distance from the lower edge of the screen; the same rule leads back.
QRectF flipped(const QRectF& rect)
{
    const QRectF screen = primaryScreen();
    return QRectF(rect.x() - screen.x(), screen.bottom() - rect.y() - rect.height(), rect.width(), rect.height());
}

QRect unflipped(const QRectF& frame)
{
    const QRectF screen = primaryScreen();
    const QRectF rect(frame.x() + screen.x(), screen.bottom() - frame.y() - frame.height(), frame.width(),
                      frame.height());
    return rect.toRect();
}

} // namespace

QMargins Window::decorations() const
{
    if (pretendedDecorations)
        return *pretendedDecorations;
    const QWindow* handle = m_widget->windowHandle();
    return handle ? handle->frameMargins() : QMargins();
}

void Window::pretendDecorations(std::optional<QMargins> margins)
{
    pretendedDecorations = margins;
}

QRect Window::contentRect() const
{
    return m_animation->target().value_or(m_widget->geometry());
}

QRectF Window::frame() const
{
    return flipped(contentRect().marginsAdded(decorations()));
}

void Window::setFrame(const QRectF& frame, bool display, bool animate)
{
    m_isPlaced = true;
    placeContentRect(unflipped(frame).marginsRemoved(decorations()), animate);
    if (display && m_content && m_widget->isVisible())
        m_content->repaint();
}

// The content has its final size before the edges start to move: whoever measures it meanwhile finds it in step with
// frame(), and it is laid out once, not at every step.
void Window::placeContentRect(const QRect& rect, bool smoothly)
{
    const QRect target(rect.topLeft(), rect.size().expandedTo(QSize(0, 0)));
    m_widget->setMinimumSize(0, 0);
    layOutContent(target.size());
    m_animation->moveTo(target, smoothly);
    takeAlong();
}

void Window::moveBy(const QPoint& distance)
{
    placeContentRect(contentRect().translated(distance), false);
}

void Window::center()
{
    const QScreen* screen = m_widget->screen();
    if (!screen)
        return;
    m_isPlaced = true;
    QRect rect = contentRect().marginsAdded(decorations());
    rect.moveCenter(screen->availableGeometry().center());
    placeContentRect(rect.marginsRemoved(decorations()), false);
}

void Window::layOutContent(const QSize& size)
{
    if (!m_content)
        return;
    m_content->setGeometry(QRect(QPoint(0, 0), size));
    if (!m_content->isVisible())
        layoutSubtreeIfNeeded(m_content);
}

void Window::limitUserToContent()
{
    if (m_content && !m_animation->target())
        m_widget->setMinimumSize(m_content->minimumSizeHint().boundedTo(m_widget->size()).expandedTo(QSize(0, 0)));
}

void Window::takeAlong()
{
    const QPoint distance = contentRect().topLeft() - m_lastOrigin;
    if (distance.isNull())
        return;
    m_lastOrigin += distance;
    m_children->parentMoved(distance);
    m_sheets->parentMoved(distance);
}

void Window::geometryChanged()
{
    if (!m_animation->target())
        layOutContent(m_widget->size());
    limitUserToContent();
    takeAlong();
}

void Window::contentWantsLayout()
{
    limitUserToContent();
}

} // namespace platform
