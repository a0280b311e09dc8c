#include "platform/toolkit/windows/AlertView.h"
#include "platform/toolkit/windows/InputGuard.h"
#include "platform/toolkit/windows/WindowParts.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QWindow>

namespace tljira {

namespace {

#ifdef Q_OS_MACOS
constexpr bool systemDrawsSheets = true;
#else
constexpr bool systemDrawsSheets = false;
#endif

constexpr Qt::WindowFlags windowStyle = Qt::Window;

void tellScreenReaders(QWidget* view, bool isThere)
{
    QAccessibleEvent event(view, isThere ? QAccessible::ObjectShow : QAccessible::ObjectHide);
    QAccessible::updateAccessibility(&event);
}

/// A button that is held down is let go: what happens to the mouse or the key from now on is not for it.
void releaseButtons(const QWidget& view)
{
    for (auto* button : view.findChildren<QAbstractButton*>())
        button->setDown(false);
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
    if (WindowParts* parent = drawnIn()) {
        moveOutOf(*parent);
        return;
    }
    widget.hide();
    if (QWindow* handle = widget.windowHandle())
        handle->setTransientParent(nullptr);
}

void WindowParts::showAsSheet()
{
    const std::shared_ptr<Window> parent = sheetParent.lock();
    if (!parent)
        return;
    if (systemDrawsSheets)
        showAsTrueSheet(of(*parent));
    else
        showInside(of(*parent));
}

void WindowParts::showAsTrueSheet(const WindowParts& parent)
{
    setStyle(Qt::Sheet, Qt::WindowModal);
    widget.setAttribute(Qt::WA_QuitOnClose, false);
    widget.winId();
    widget.windowHandle()->setTransientParent(parent.widget.windowHandle());
    show();
    widget.activateWindow();
    focus.check();
}

WindowParts* WindowParts::drawnIn() const
{
    auto* const parent = dynamic_cast<WindowWidget*>(widget.parentWidget());
    return parent ? &parent->parts() : nullptr;
}

WindowWidget* WindowParts::sheetInside() const
{
    const std::shared_ptr<Window> sheet = sheets.attached();
    WindowWidget* const inside = sheet ? &of(*sheet).widget : nullptr;
    return inside && inside->parentWidget() == &widget && !inside->isHidden() ? inside : nullptr;
}

void WindowParts::showInside(WindowParts& parent)
{
    parent.focus.rememberCurrent();
    const bool isNew = drawnIn() != &parent;
    if (isNew)
        moveInto(parent);
    widget.show();
    parent.cover->fit();
    parent.coverContent();
    if (isNew)
        parent.cover->slideIn();
    InputGuard::instance().forgetKeysThatAreDown();
    focus.check();
    parent.keyChanged();
    keyChanged();
}

void WindowParts::moveInto(WindowParts& parent)
{
    const QRect rect = contentRect();
    focus.forget();
    if (QWidget* wanted = widget.focusWidget())
        focus.remember(wanted);
    widget.giveUpSystemWindow();
    // The type keeps Tab inside.
    widget.setParent(&parent.widget, Qt::SubWindow);
    widget.setAutoFillBackground(true);
    widget.setAttribute(Qt::WA_NoMousePropagation);
    parent.cover = new SheetCover(&parent.widget, &widget);
    placeContentRect(rect, true);
    drawSheetEdge();
}

void WindowParts::moveOutOf(WindowParts& parent)
{
    const QRect rect = contentRect();
    if (parent.cover)
        parent.cover->slideOut();
    parent.cover = nullptr;
    delete sheetEdge;
    widget.hide();
    // Behind another window hiding does not release the keyboard, and the parent would go on pointing to a view here.
    if (QWidget* const focused = parent.widget.window()->focusWidget(); focused && widget.isAncestorOf(focused))
        focused->clearFocus();
    widget.setParent(nullptr, windowStyle);
    widget.setAutoFillBackground(false);
    widget.setAttribute(Qt::WA_NoMousePropagation, false);
    focus.forget();
    placeContentRect(rect, false);
    parent.sheetWent();
}

void WindowParts::sheetWent()
{
    coverContent();
    makeRoom(true);
    InputGuard::instance().forgetKeysThatAreDown();
    keyChanged();
}

// Its controls stay enabled and visible, for whoever asks them. A subwindow without the keyboard is what Qt looks for
// no shortcuts in.
void WindowParts::coverContent()
{
    const bool isCovered = sheetInside();
    if (cover) {
        cover->fit();
        cover->setVisible(isCovered);
    }
    if (!content || isCovered == (content->windowType() == Qt::SubWindow))
        return;
    content->overrideWindowFlags(isCovered ? Qt::SubWindow : Qt::Widget);
    tellScreenReaders(content, !isCovered);
    if (isCovered) {
        releaseButtons(*content);
        return;
    }
    for (auto* alert : content->findChildren<AlertView*>())
        alert->sheetHasGone();
}

void WindowParts::drawSheetEdge()
{
    if (!sheetEdge)
        sheetEdge = new SheetEdge(&widget);
    sheetEdge->show();
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
