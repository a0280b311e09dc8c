#include "platform/toolkit/windows/Window.h"

#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/WindowParts.h"

namespace tljira {

namespace {

constexpr Qt::WindowFlags windowStyle = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                        Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                                        Qt::WindowCloseButtonHint;

} // namespace

Window::Window()
    : m_parts(std::make_unique<Parts>(*this))
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
    const QSize size = contentView ? contentView->size() : window->m_parts->contentRect().size();
    window->setContentView(contentView);
    window->m_parts->placeContentRect(QRect(window->m_parts->contentRect().topLeft(), size), false);
    return window;
}

std::shared_ptr<Window> Window::windowOf(const QWidget* view)
{
    WindowWidget* const widget = WindowFocus::windowAround(view);
    return widget ? widget->parts().window.shared_from_this() : nullptr;
}

QWidget* Window::contentView() const
{
    return m_parts->content;
}

void Window::setContentView(QWidget* view)
{
    if (m_parts->content && m_parts->content != view)
        removeFromSuperview(m_parts->content);
    m_parts->content = view;
    addSubview(&m_parts->widget, view);
    m_parts->layOutContent(m_parts->contentRect().size());
    m_parts->coverContent();
}

QString Window::title() const
{
    return m_parts->widget.windowTitle();
}

void Window::setTitle(const QString& title)
{
    m_parts->widget.setWindowTitle(title);
}

void Window::setDelegate(const std::shared_ptr<WindowDelegate>& delegate)
{
    m_parts->delegate = delegate;
}

std::shared_ptr<WindowDelegate> Window::delegate() const
{
    return m_parts->delegate.lock();
}

bool Window::isVisible() const
{
    return m_parts->widget.isVisible();
}

bool Window::isKeyWindow() const
{
    return m_parts->widget.isVisible() && m_parts->widget.isActiveWindow() && !m_parts->sheetInside();
}

void Window::makeKeyAndOrderFront()
{
    if (const std::shared_ptr<Window> parent = sheetParent()) {
        if (parent->isVisible())
            parent->makeKeyAndOrderFront();
        return;
    }
    if (!isVisible()) {
        const bool isModalRun = m_parts->widget.windowModality() == Qt::ApplicationModal;
        m_parts->setStyle(windowStyle, isModalRun ? Qt::ApplicationModal : Qt::NonModal);
        m_parts->host.adopt();
        if (!m_parts->isPlaced)
            center();
    }
    if (m_parts->widget.isMinimized())
        m_parts->widget.setWindowState(m_parts->widget.windowState() & ~Qt::WindowMinimized);
    m_parts->show();
    m_parts->widget.raise();
    m_parts->widget.activateWindow();
    m_parts->focus.check();
}

void Window::orderOut()
{
    m_parts->widget.hide();
}

void Window::close()
{
    if (m_parts->isClosed)
        return;
    const std::shared_ptr<Window> self = shared_from_this();
    if (const std::shared_ptr<Window> parent = sheetParent())
        parent->endSheet(self, ModalResponse::Stop);
    m_parts->announceClose();
    m_parts->widget.close();
}

QWidget* Window::widget() const
{
    return &m_parts->widget;
}

} // namespace tljira
