#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Decorations.h"
#include "platform/toolkit/windows/WindowParts.h"

#include <QGuiApplication>
#include <QLayout>
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
    return drawnIn() ? QMargins() : decorationsOf(widget);
}

QRect WindowParts::contentRect() const
{
    return room.contentIn(outerRect());
}

QRect WindowParts::outerRect() const
{
    const QRect rect = animation.target().value_or(widget.geometry());
    const WindowParts* const parent = drawnIn();
    return parent ? rect.translated(parent->outerRect().topLeft()) : rect;
}

QRectF Window::frame() const
{
    return flipped(m_parts->contentRect().marginsAdded(m_parts->decorations()));
}

void Window::setFrame(const QRectF& frame, bool display, bool animate)
{
    m_parts->isPlaced = true;
    m_parts->restore();
    const QRect rect = m_parts->withTitleBarOnScreen(unflipped(frame));
    m_parts->placeContentRect(rect.marginsRemoved(m_parts->decorations()), animate);
    if (display && m_parts->content && m_parts->widget.isVisible())
        m_parts->content->repaint();
}

void WindowParts::restore()
{
    if (fillsScreen())
        widget.setWindowState(widget.windowState() & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
}

QRect WindowParts::withTitleBarOnScreen(const QRect& rect) const
{
    const QScreen* const under = QGuiApplication::screenAt(QPoint(rect.center().x(), rect.top()));
    const QScreen* const screen = under ? under : widget.screen();
    if (drawnIn() || !screen || rect.top() >= screen->availableGeometry().top())
        return rect;
    return QRect(QPoint(rect.left(), screen->availableGeometry().top()), rect.size());
}

// The content has its final size before the edges start to move: whoever measures it meanwhile finds it in step with
// frame(), and it is laid out once, not at every step.
void WindowParts::placeContentRect(const QRect& rect, bool smoothly)
{
    const QRect target(rect.topLeft(), rect.size().expandedTo(QSize(0, 0)));
    widget.setMinimumSize(0, 0);
    layOutContent(target.size());
    const QRect grown = room.grow(target, sheetSize(), roomArea());
    if (WindowParts* parent = drawnIn()) {
        sizeAsSheet = grown.size();
        parent->makeRoom(smoothly);
        fitInside(*parent, smoothly);
    } else {
        animation.moveTo(grown, smoothly);
    }
    if (WindowWidget* sheet = sheetInside())
        sheet->parts().fitInside(*this, smoothly);
    takeAlong();
}

void WindowParts::makeRoom(bool smoothly)
{
    const QRect before = outerRect();
    const QRect wanted = room.contentAfter(before);
    if (fillsScreen())
        room.grow(before, QSize(), QRect());
    else if (room.grow(wanted, sheetSize(), roomArea()) != before)
        placeContentRect(wanted, smoothly);
}

bool WindowParts::fillsScreen() const
{
    return widget.isWindow() && widget.windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen);
}

QSize WindowParts::sheetSize() const
{
    const std::shared_ptr<Window> sheet = sheets.attached();
    const bool isInside = sheet && of(*sheet).drawnIn() == this;
    return isInside ? of(*sheet).sizeAsSheet : QSize();
}

QRect WindowParts::roomArea() const
{
    const QScreen* screen = drawnIn() ? nullptr : widget.screen();
    return screen ? screen->availableGeometry().marginsRemoved(decorations()) : QRect();
}

// In the middle of what the window will be once it is where it is going, below its title bar, and never larger than it.
void WindowParts::fitInside(const WindowParts& parent, bool smoothly)
{
    const QSize space = parent.outerRect().size();
    const QSize size = sizeAsSheet.boundedTo(space);
    const QRect target(QPoint((space.width() - size.width()) / 2, 0), size);
    if (animation.target() != target)
        animation.moveTo(target, smoothly);
}

void WindowParts::moveBy(const QPoint& distance)
{
    placeContentRect(contentRect().translated(distance), false);
}

void WindowParts::parentMoved(const QPoint& distance)
{
    if (drawnIn())
        takeAlong();
    else
        moveBy(distance);
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
    if (!content || animation.target() || drawnIn())
        return;
    QSize least = content->minimumSizeHint().expandedTo(QSize(0, 0));
    // Texts that wrap need more of it the narrower they are.
    if (const QLayout* layout = content->layout(); layout && layout->hasHeightForWidth())
        least.setHeight(layout->totalMinimumHeightForWidth(content->width()));
    least = least.expandedTo(sheetSize());
    const bool isItsUsers = !fillsScreen() && room.isResizedByUser(widget.geometry());
    if (isItsUsers)
        least.setHeight(std::min(least.height(), std::max(roomArea().height(), widget.height())));
    widget.setMinimumSize(isItsUsers ? QSize(std::min(least.width(), widget.width()), least.height())
                                     : least.boundedTo(widget.size()));
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
        layOutContent(contentRect().size());
    if (cover)
        cover->fit();
    if (WindowWidget* sheet = sheetInside())
        sheet->parts().fitInside(*this, false);
    limitUserToContent();
    takeAlong();
}

// In a later turn, when all that is inside has heard of it.
void WindowParts::fontChanged()
{
    QMetaObject::invokeMethod(
        &widget,
        [this] {
            if (widget.isVisible())
                growToFit(window.shared_from_this(), false);
        },
        Qt::QueuedConnection);
}

void WindowParts::contentWantsLayout()
{
    limitUserToContent();
}

} // namespace tljira
