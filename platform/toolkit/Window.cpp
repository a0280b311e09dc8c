#include "platform/toolkit/Window.h"

#include "platform/toolkit/ChildWindows.h"
#include "platform/toolkit/FrameAnimation.h"
#include "platform/toolkit/ModalRuns.h"
#include "platform/toolkit/SheetEdge.h"
#include "platform/toolkit/SheetQueue.h"
#include "platform/toolkit/View.h"
#include "platform/toolkit/WindowDelegate.h"
#include "platform/toolkit/WindowWidget.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <cmath>

namespace platform {

namespace {

constexpr Qt::WindowFlags windowStyle = Qt::Window;
#ifdef Q_OS_MACOS
constexpr Qt::WindowFlags sheetStyle = Qt::Sheet;
#else
constexpr Qt::WindowFlags sheetStyle = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
#endif

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

QRect keptInside(QRect rect, const QRect& area)
{
    rect.moveRight(std::min(rect.right(), area.right()));
    rect.moveBottom(std::min(rect.bottom(), area.bottom()));
    rect.moveLeft(std::max(rect.left(), area.left()));
    rect.moveTop(std::max(rect.top(), area.top()));
    return rect;
}

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

// Frames.

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

// On screen and off.

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

// Sheets.

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

// Child windows.

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

QWidget* Window::widget() const
{
    return m_widget.get();
}

} // namespace platform
