#include "platform/toolkit/Decorations.h"
#include "platform/toolkit/View.h"
#include "platform/toolkit/WindowParts.h"

#include <QGuiApplication>
#include <QScreen>

namespace tljira {

namespace {

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

QMargins WindowParts::decorations() const
{
    return decorationsOf(widget);
}

QRect WindowParts::contentRect() const
{
    return animation.target().value_or(widget.geometry());
}

QRectF Window::frame() const
{
    return flipped(m_parts->contentRect().marginsAdded(m_parts->decorations()));
}

void Window::setFrame(const QRectF& frame, bool display, bool animate)
{
    m_parts->isPlaced = true;
    m_parts->placeContentRect(unflipped(frame).marginsRemoved(m_parts->decorations()), animate);
    if (display && m_parts->content && m_parts->widget.isVisible())
        m_parts->content->repaint();
}

// The content has its final size before the edges start to move: whoever measures it meanwhile finds it in step with
// frame(), and it is laid out once, not at every step.
void WindowParts::placeContentRect(const QRect& rect, bool smoothly)
{
    const QRect target(rect.topLeft(), rect.size().expandedTo(QSize(0, 0)));
    widget.setMinimumSize(0, 0);
    layOutContent(target.size());
    animation.moveTo(target, smoothly);
    takeAlong();
}

void WindowParts::moveBy(const QPoint& distance)
{
    placeContentRect(contentRect().translated(distance), false);
}

void Window::center()
{
    const QScreen* screen = m_parts->widget.screen();
    if (!screen)
        return;
    m_parts->isPlaced = true;
    QRect rect = m_parts->contentRect().marginsAdded(m_parts->decorations());
    rect.moveCenter(screen->availableGeometry().center());
    m_parts->placeContentRect(rect.marginsRemoved(m_parts->decorations()), false);
}

void WindowParts::layOutContent(const QSize& size)
{
    if (!content)
        return;
    content->setGeometry(QRect(QPoint(0, 0), size));
    if (!content->isVisible())
        layoutSubtreeIfNeeded(content);
}

void WindowParts::limitUserToContent()
{
    if (content && !animation.target())
        widget.setMinimumSize(content->minimumSizeHint().boundedTo(widget.size()).expandedTo(QSize(0, 0)));
}

void WindowParts::takeAlong()
{
    const QPoint distance = contentRect().topLeft() - lastOrigin;
    if (distance.isNull())
        return;
    lastOrigin += distance;
    children.parentMoved(distance);
    sheets.parentMoved(distance);
}

void WindowParts::geometryChanged()
{
    if (!animation.target())
        layOutContent(widget.size());
    limitUserToContent();
    takeAlong();
}

void WindowParts::contentWantsLayout()
{
    limitUserToContent();
}

} // namespace tljira
