#include "platform/toolkit/Window.h"

#include "platform/toolkit/ChildWindows.h"
#include "platform/toolkit/FrameAnimation.h"
#include "platform/toolkit/ModalRuns.h"
#include "platform/toolkit/SheetEdge.h"
#include "platform/toolkit/SheetQueue.h"
#include "platform/toolkit/View.h"
#include "platform/toolkit/WindowDelegate.h"
#include "platform/toolkit/WindowWidget.h"

namespace platform {

namespace {

constexpr Qt::WindowFlags windowStyle = Qt::Window;

bool takesTab(const QWidget* control)
{
    return (control->focusPolicy() & Qt::TabFocus) && control->isVisible() && control->isEnabled();
}

} // namespace

Window::Window()
    : m_widget(std::make_unique<WindowWidget>(*this))
    , m_animation(std::make_unique<FrameAnimation>(m_widget.get(), [this] { geometryChanged(); }))
    , m_sheets(std::make_unique<SheetQueue>(*this))
    , m_children(std::make_unique<ChildWindows>(*this))
{
}

Window::~Window()
{
    removeFromSuperview(contentView());
}

std::shared_ptr<Window> Window::create(const QString& title, QWidget* contentView)
{
    const std::shared_ptr<Window> window(new Window);
    window->setTitle(title);
    const QSize size = contentView ? contentView->size() : window->contentRect().size();
    window->setContentView(contentView);
    window->placeContentRect(QRect(window->contentRect().topLeft(), size), false);
    return window;
}

std::shared_ptr<Window> Window::windowOf(const QWidget* view)
{
    auto* widget = view ? dynamic_cast<WindowWidget*>(view->window()) : nullptr;
    return widget ? widget->window().shared_from_this() : nullptr;
}

QWidget* Window::contentView() const
{
    return m_content;
}

void Window::setContentView(QWidget* view)
{
    if (m_content && m_content != view)
        removeFromSuperview(m_content);
    m_content = view;
    addSubview(m_widget.get(), view);
    layOutContent(contentRect().size());
}

QString Window::title() const
{
    return m_widget->windowTitle();
}

void Window::setTitle(const QString& title)
{
    m_widget->setWindowTitle(title);
}

void Window::setDelegate(const std::shared_ptr<WindowDelegate>& delegate)
{
    m_delegate = delegate;
}

std::shared_ptr<WindowDelegate> Window::delegate() const
{
    return m_delegate.lock();
}

bool Window::isVisible() const
{
    return m_widget->isVisible();
}

bool Window::isKeyWindow() const
{
    return m_widget->isVisible() && m_widget->isActiveWindow();
}

void Window::setStyle(Qt::WindowFlags flags, Qt::WindowModality modality)
{
    if (m_widget->windowFlags() != flags)
        m_widget->setWindowFlags(flags);
    m_widget->setWindowModality(modality);
}

// Some window systems put a new window beside where it was to be, by the width of its decorations.
void Window::show()
{
    const QRect rect = contentRect();
    m_widget->show();
    if (!m_animation->target() && m_widget->geometry() != rect)
        m_widget->setGeometry(rect);
}

void Window::makeKeyAndOrderFront()
{
    if (!isVisible() && !sheetParent()) {
        const bool isModalRun = m_widget->windowModality() == Qt::ApplicationModal;
        setStyle(windowStyle, isModalRun ? Qt::ApplicationModal : Qt::NonModal);
        if (!m_isPlaced)
            center();
    }
    show();
    m_widget->raise();
    m_widget->activateWindow();
    focusFirstControl();
}

void Window::focusFirstControl()
{
    if (m_widget->focusWidget())
        return;
    QWidget* control = m_widget->nextInFocusChain();
    while (control != m_widget.get() && !takesTab(control))
        control = control->nextInFocusChain();
    if (control != m_widget.get())
        control->setFocus(Qt::TabFocusReason);
}

void Window::orderOut()
{
    m_widget->hide();
}

void Window::visibilityChanged(bool visible)
{
    if (visible)
        m_isClosed = false;
    m_children->parentVisibilityChanged(visible);
    m_sheets->parentVisibilityChanged(visible);
}

void Window::keyChanged(bool isKey)
{
    const std::shared_ptr<WindowDelegate> delegate = m_delegate.lock();
    if (!delegate)
        return;
    if (isKey)
        delegate->windowDidBecomeKey(*this);
    else
        delegate->windowDidResignKey(*this);
}

void Window::contentLeft(const QObject* view)
{
    if (view != m_content)
        return;
    m_content = nullptr;
    if (parentWindow())
        orderOut();
}

void Window::announceClose()
{
    m_isClosed = true;
    m_sheets->endAll(ModalResponse::Stop);
    if (const std::shared_ptr<WindowDelegate> delegate = m_delegate.lock())
        delegate->windowWillClose(*this);
    ModalRuns::windowCloses(*this);
}

bool Window::userWantsToClose()
{
    if (m_isClosed)
        return true;
    if (attachedSheet())
        return false;
    if (sheetParent()) {
        m_widget->clickCancelButton();
        return false;
    }
    announceClose();
    return true;
}

void Window::close()
{
    if (m_isClosed)
        return;
    const std::shared_ptr<Window> self = shared_from_this();
    if (const std::shared_ptr<Window> parent = sheetParent())
        parent->endSheet(self, ModalResponse::Stop);
    announceClose();
    m_widget->close();
}

void Window::setApplicationModal(bool modal)
{
    const Qt::WindowModality modality = modal ? Qt::ApplicationModal : Qt::NonModal;
    m_widget->setAttribute(Qt::WA_QuitOnClose, !modal);
    // A change of modality takes hold when a window is shown.
    const bool wasVisible = isVisible();
    if (wasVisible)
        m_widget->hide();
    m_widget->setWindowModality(modality);
    if (wasVisible)
        show();
}

QWidget* Window::widget() const
{
    return m_widget.get();
}

} // namespace platform
