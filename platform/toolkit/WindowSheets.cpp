#include "platform/toolkit/ChildWindows.h"
#include "platform/toolkit/FrameAnimation.h"
#include "platform/toolkit/SheetEdge.h"
#include "platform/toolkit/SheetQueue.h"
#include "platform/toolkit/WindowWidget.h"

#include <QScreen>
#include <QWindow>

namespace platform {

namespace {

#ifdef Q_OS_MACOS
constexpr Qt::WindowFlags sheetStyle = Qt::Sheet;
#else
constexpr Qt::WindowFlags sheetStyle = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
#endif

QRect keptInside(QRect rect, const QRect& area)
{
    rect.moveRight(std::min(rect.right(), area.right()));
    rect.moveBottom(std::min(rect.bottom(), area.bottom()));
    rect.moveLeft(std::max(rect.left(), area.left()));
    rect.moveTop(std::max(rect.top(), area.top()));
    return rect;
}

} // namespace

void Window::beginSheet(const std::shared_ptr<Window>& sheet, SheetCompletion completion)
{
    if (sheet)
        m_sheets->begin(sheet, std::move(completion));
}

void Window::endSheet(const std::shared_ptr<Window>& sheet, int returnCode)
{
    if (sheet)
        m_sheets->end(sheet, returnCode);
}

std::shared_ptr<Window> Window::sheetParent() const
{
    return m_sheetParent.lock();
}

std::shared_ptr<Window> Window::attachedSheet() const
{
    return m_sheets->attached();
}

void Window::becomeSheetOf(const std::shared_ptr<Window>& parent)
{
    orderOut();
    m_sheetParent = parent;
}

void Window::leaveSheet()
{
    m_sheetParent.reset();
    orderOut();
    delete m_sheetEdge;
    if (QWindow* handle = m_widget->windowHandle())
        handle->setTransientParent(nullptr);
}

void Window::showAsSheet()
{
    const std::shared_ptr<Window> parent = sheetParent();
    if (!parent)
        return;
    setStyle(sheetStyle, Qt::WindowModal);
    m_widget->setAttribute(Qt::WA_QuitOnClose, false);
    m_widget->winId();
    m_widget->windowHandle()->setTransientParent(parent->m_widget->windowHandle());

    const QRect below = parent->contentRect();
    QRect rect = contentRect();
    rect.moveTo(below.left() + (below.width() - rect.width()) / 2, below.top() + decorations().top());
    placeContentRect(keptInside(rect, parent->m_widget->screen()->availableGeometry()), false);
    show();
    drawSheetEdge();
    m_widget->activateWindow();
    focusFirstControl();
}

void Window::drawSheetEdge()
{
    if (!m_sheetEdge)
        m_sheetEdge = new SheetEdge(m_widget.get());
    m_sheetEdge->setVisible(decorations().isNull());
    m_sheetEdge->raise();
}

void Window::addChildWindow(const std::shared_ptr<Window>& child, Ordered ordered)
{
    if (child && child.get() != this)
        m_children->add(child, ordered);
}

void Window::removeChildWindow(const std::shared_ptr<Window>& child)
{
    if (child)
        m_children->remove(child);
}

std::shared_ptr<Window> Window::parentWindow() const
{
    return m_parentWindow.lock();
}

} // namespace platform
