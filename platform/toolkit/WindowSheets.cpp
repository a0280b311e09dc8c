#include "platform/toolkit/WindowParts.h"

#include <QScreen>
#include <QWindow>

namespace tljira {

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
        m_parts->sheets.begin(sheet, std::move(completion));
}

void Window::endSheet(const std::shared_ptr<Window>& sheet, int returnCode)
{
    if (sheet)
        m_parts->sheets.end(sheet, returnCode);
}

std::shared_ptr<Window> Window::sheetParent() const
{
    return m_parts->sheetParent.lock();
}

std::shared_ptr<Window> Window::attachedSheet() const
{
    return m_parts->sheets.attached();
}

void WindowParts::becomeSheetOf(const std::shared_ptr<Window>& parent)
{
    widget.hide();
    sheetParent = parent;
}

void WindowParts::leaveSheet()
{
    sheetParent.reset();
    widget.hide();
    delete sheetEdge;
    if (QWindow* handle = widget.windowHandle())
        handle->setTransientParent(nullptr);
}

void WindowParts::showAsSheet()
{
    const std::shared_ptr<Window> shared = sheetParent.lock();
    if (!shared)
        return;
    const WindowParts& parent = of(*shared);
    setStyle(sheetStyle, Qt::WindowModal);
    widget.setAttribute(Qt::WA_QuitOnClose, false);
    widget.winId();
    widget.windowHandle()->setTransientParent(parent.widget.windowHandle());

    const QRect below = parent.contentRect();
    QRect rect = contentRect();
    rect.moveTo(below.left() + (below.width() - rect.width()) / 2, below.top() + decorations().top());
    placeContentRect(keptInside(rect, parent.widget.screen()->availableGeometry()), false);
    show();
    drawSheetEdge();
    widget.activateWindow();
    focusFirstControl();
}

void WindowParts::drawSheetEdge()
{
    if (!sheetEdge)
        sheetEdge = new SheetEdge(&widget);
    sheetEdge->setVisible(decorations().isNull());
    sheetEdge->raise();
}

void Window::addChildWindow(const std::shared_ptr<Window>& child, Ordered ordered)
{
    if (child && child.get() != this)
        m_parts->children.add(child, ordered);
}

void Window::removeChildWindow(const std::shared_ptr<Window>& child)
{
    if (child)
        m_parts->children.remove(child);
}

std::shared_ptr<Window> Window::parentWindow() const
{
    return m_parts->parentWindow.lock();
}

} // namespace tljira
