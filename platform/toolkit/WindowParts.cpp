#include "platform/toolkit/WindowParts.h"

#include "platform/toolkit/ModalRuns.h"
#include "platform/toolkit/WindowDelegate.h"

namespace tljira {

namespace {

bool takesTab(const QWidget* control)
{
    return (control->focusPolicy() & Qt::TabFocus) && control->isVisible() && control->isEnabled();
}

} // namespace

WindowParts::WindowParts(Window& owner)
    : window(owner)
    , widget(*this)
    , animation(&widget, [this] { geometryChanged(); })
    , sheets(owner)
    , children(owner)
{
}

WindowParts::~WindowParts() = default;

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
    const QRect rect = contentRect();
    widget.show();
    if (!animation.target() && widget.geometry() != rect)
        widget.setGeometry(rect);
}

void WindowParts::focusFirstControl()
{
    if (widget.focusWidget())
        return;
    QWidget* control = widget.nextInFocusChain();
    while (control != &widget && !takesTab(control))
        control = control->nextInFocusChain();
    if (control != &widget)
        control->setFocus(Qt::TabFocusReason);
}

void WindowParts::visibilityChanged(bool visible)
{
    if (visible)
        isClosed = false;
    children.parentVisibilityChanged(visible);
    sheets.parentVisibilityChanged(visible);
}

void WindowParts::keyChanged(bool isKey)
{
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
    if (sheets.attached())
        return false;
    if (!sheetParent.expired()) {
        widget.clickCancelButton();
        return false;
    }
    announceClose();
    return true;
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
