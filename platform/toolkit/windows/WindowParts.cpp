#include "platform/toolkit/windows/WindowParts.h"

#include "platform/toolkit/windows/InputGuard.h"
#include "platform/toolkit/windows/ModalRuns.h"
#include "platform/toolkit/windows/WindowAccessible.h"
#include "platform/toolkit/windows/WindowDelegate.h"

namespace tljira {

WindowParts::WindowParts(Window& owner)
    : window(owner)
    , widget(*this)
    , animation(&widget, [this] { geometryChanged(); })
    , host(&widget)
    , sheets(owner)
    , children(owner)
    , focus(*this)
{
    InputGuard::instance();
    makeWindowsAccessible();
}

WindowParts::~WindowParts()
{
    // Nobody hears of a window that is going, and no sheet may go with it.
    delegate.reset();
    sheets.letGo();
}

WindowParts& WindowParts::of(const Window& some)
{
    return static_cast<WindowWidget*>(some.widget())->parts();
}

void WindowParts::setStyle(Qt::WindowFlags flags, Qt::WindowModality modality)
{
    if (widget.windowFlags() != flags)
        widget.setWindowFlags(flags);
    widget.setWindowModality(modality);
}

// Some window systems put a new window beside where it was to be, by the width of its decorations.
void WindowParts::show()
{
    const QRect rect = outerRect();
    widget.show();
    if (!animation.target() && widget.geometry() != rect)
        widget.setGeometry(rect);
}

void WindowParts::visibilityChanged(bool visible)
{
    if (visible)
        isClosed = false;
    children.parentVisibilityChanged(visible);
    sheets.parentVisibilityChanged(visible);
    if (WindowParts* parent = drawnIn())
        parent->coverContent();
    keyChanged();
}

void WindowParts::keyChanged()
{
    if (isKey == window.isKeyWindow())
        return;
    isKey = !isKey;
    focus.check();
    if (isKey)
        noteKeyWindow(&widget);
    const std::shared_ptr<WindowDelegate> listener = delegate.lock();
    if (!listener)
        return;
    if (isKey)
        listener->windowDidBecomeKey(window);
    else
        listener->windowDidResignKey(window);
}

void WindowParts::contentLeft(const QObject* view)
{
    if (view != content)
        return;
    content = nullptr;
    if (!parentWindow.expired())
        widget.hide();
}

void WindowParts::announceClose()
{
    isClosed = true;
    sheets.endAll(ModalResponse::Stop);
    if (const std::shared_ptr<WindowDelegate> listener = delegate.lock())
        listener->windowWillClose(window);
    ModalRuns::windowCloses(window);
}

bool WindowParts::userWantsToClose()
{
    if (isClosed)
        return true;
    if (!sheetParent.expired()) {
        widget.clickCancelButton();
        return false;
    }
    endSheetsForUser();
    if (!isClosed)
        announceClose();
    return true;
}

// Each does what it does on Escape, and ends if that is not enough: a window that cannot be left would lock its user
// in.
void WindowParts::endSheetsForUser()
{
    const std::shared_ptr<Window> sheet = sheets.attached();
    if (!sheet)
        return;
    WindowParts& inner = of(*sheet);
    inner.endSheetsForUser();
    inner.widget.clickCancelButton();
    sheets.end(sheet, ModalResponse::Cancel);
}

void WindowParts::setApplicationModal(bool modal)
{
    const Qt::WindowModality modality = modal ? Qt::ApplicationModal : Qt::NonModal;
    widget.setAttribute(Qt::WA_QuitOnClose, !modal);
    // A change of modality takes hold when a window is shown.
    const bool wasVisible = widget.isVisible();
    if (wasVisible)
        widget.hide();
    widget.setWindowModality(modality);
    if (wasVisible)
        show();
}

} // namespace tljira
