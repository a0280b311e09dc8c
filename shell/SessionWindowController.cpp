#include "shell/SessionWindowController.h"

#include "client/JAController.h"
#include "client/ServerName.h"
#include "constants/FrameworkBundle.h"
#include "platform/foundation/Log.h"
#include "platform/toolkit/Application.h"
#include "platform/toolkit/FillingSubview.h"
#include "platform/toolkit/FitContent.h"
#include "platform/toolkit/InterfaceTexts.h"
#include "platform/toolkit/ProgressIndicator.h"
#include "platform/toolkit/View.h"
#include "shell/JAHeadViewController.h"
#include "shell/JALoginWindow.h"
#include "shell/UIViewStyle.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace {

std::optional<tljira::Bundle> frameworkBundle()
{
    return tljira::Bundle::bundleWithIdentifier(QLatin1String(frameworkBundleIdentifier));
}

void countSubviews(tljira::ViewController& controller)
{
    controller.setRepresentedObject(QVariant::fromValue<qint64>(tljira::subviews(controller.view()).size()));
}

/// What the interface file put there for the time before the first container is of no more use. A container that is
/// there already stays in its place: it would give up the keyboard otherwise.
void removeSubviews(QWidget* view, const QWidget* container, std::initializer_list<QWidget*> kept)
{
    for (QWidget* subview : tljira::subviews(view)) {
        if (subview == container)
            continue;
        tljira::removeFromSuperview(subview);
        if (std::find(kept.begin(), kept.end(), subview) == kept.end())
            subview->deleteLater();
    }
}

/// The keyboard goes along with the view that the user is to fill in: to the first field that is empty, or the first
/// one.
void focusFirstField(QWidget* container)
{
    if (container->isAncestorOf(container->window()->focusWidget()))
        return;
    QList<QLineEdit*> fields = container->findChildren<QLineEdit*>();
    fields.removeIf([](const QLineEdit* field) { return !field->isVisible() || !field->isEnabled(); });
    const auto empty =
        std::find_if(fields.begin(), fields.end(), [](const QLineEdit* field) { return field->text().isEmpty(); });
    if (!fields.isEmpty())
        (empty == fields.end() ? fields.first() : *empty)->setFocus();
}

QString text(const char* source)
{
    return tljira::InterfaceTexts::shared().text("JMWindowController", source);
}

QList<QPushButton*> cancelButtons(const QWidget* view)
{
    QList<QPushButton*> buttons = view ? view->findChildren<QPushButton*>() : QList<QPushButton*>();
    buttons.removeIf(
        [](const QPushButton* button) { return button->property("action") != QLatin1String("cancelAction"); });
    return buttons;
}

} // namespace

SessionWindowController::SessionWindowController()
{
    outlets.bind("view", &m_view);
    outlets.bind("headView", &m_headView);
    outlets.bind("bodyView", &m_bodyView);
    outlets.bind("downloadViewContainer", &m_downloadViewContainer);
    outlets.bind("loginViewContainer", &m_loginViewContainer);
    actions.bind("cancelAction", [this] { cancelAction(); });
}

SessionWindowController::~SessionWindowController() = default;

void SessionWindowController::initWithNib()
{
    UIViewStyle::styleLoadedViews();
    initWithWindowNibName(QStringLiteral("JMWindowController"), frameworkBundle());
}

void SessionWindowController::initSession(const BodyMaker& makeBody)
{
    m_jaLoginWindow = JALoginWindow::init();
    const auto& client = JAController::sharedInstance();
    client->setPathFile(QString());
    client->setDelegate(sharedFrom(this));
    const auto bundle = frameworkBundle();
    m_body = makeBody(bundle);
    m_headViewController = JAHeadViewController::initWithNibName(QStringLiteral("JAHeadViewController"), bundle);
    tljira::log(u"?? %@", m_body);
}

void SessionWindowController::windowDidLoad()
{
    WindowController::windowDidLoad();
    showThatSessionIsLookedFor();
    setLoginViews();
    setDownloadViews();
    useOneWidth();
    JAController::sharedInstance()->updateSession({});
}

void SessionWindowController::showThatSessionIsLookedFor()
{
    if (auto* indicator = tljira::findView<tljira::ProgressIndicator>(m_view, "connectingIndicator"))
        indicator->startAnimation();
    const int initialWidth = m_view ? m_view->width() : 0;
    const QString host = client::serverName();
    auto* label = tljira::findView<QLabel>(m_view, "connectingLabel");
    if (!label)
        return;
    if (!host.isEmpty())
        label->setText(text(QT_TRANSLATE_NOOP("JMWindowController", "Looking for your session on %1…")).arg(host));
    // On several lines only where one is too short: a text that may wrap does so early.
    label->setWordWrap(tljira::neededSize(m_view).width() > initialWidth);
}

void SessionWindowController::cancelAction()
{
    const auto ownWindow = window();
    if (const auto parent = ownWindow->sheetParent())
        parent->endSheet(ownWindow, tljira::ModalResponse::Cancel);
    else
        ownWindow->close();
}

// A switch between views of different widths would jump sideways.
void SessionWindowController::useOneWidth()
{
    int width = 0;
    const QList<QWidget*> views{m_view, m_loginViewContainer, m_downloadViewContainer};
    for (QWidget* view : views)
        width = std::max(width, view ? tljira::neededSize(view).width() : 0);
    for (QWidget* view : views) {
        if (view)
            view->resize(width, std::max(view->height(), tljira::neededSize(view).height()));
    }
    tljira::growToFit(window(), false);
}

void SessionWindowController::setLoginViews()
{
    window()->addChildWindow(m_jaLoginWindow->window(), tljira::Window::Ordered::Below);
    QWidget* form = m_jaLoginWindow->view();
    if (!m_loginViewContainer || !form)
        return;
    const QRect frame = form->geometry();
    tljira::addFillingSubview(m_loginViewContainer, form);
    m_loginViewContainer->setGeometry(frame);
}

void SessionWindowController::setDownloadViews()
{
    tljira::addFillingSubview(m_bodyView, m_body->view());
    tljira::addFillingSubview(m_headView, m_headViewController->view());
    // One interface file serves the windows of both jobs; the panel's says which it is.
    if (const QString title = m_body->view()->windowTitle(); !title.isEmpty())
        window()->setTitle(title);
    if (m_downloadViewContainer) {
        m_downloadViewContainer->resize(
            tljira::neededSize(m_downloadViewContainer).expandedTo(m_downloadViewContainer->sizeHint()));
        tljira::layoutSubtreeIfNeeded(m_downloadViewContainer);
    }
    countSubviews(*m_body);
    countSubviews(*m_headViewController);
}

// Whoever watches the window sees its upper right corner move by the size of the decorations: the place is worked out
// from the container's own size, the size with the decorations.
void SessionWindowController::setActualView(QWidget* container)
{
    const auto ownWindow = windowIfLoaded();
    if (!ownWindow || !m_view || !container)
        return;
    tljira::layoutSubtreeIfNeeded(container);
    const QSize size = container->size();
    removeSubviews(m_view, container, {m_downloadViewContainer, m_loginViewContainer});
    tljira::addSubview(m_view, container);

    const QRectF before = ownWindow->frame();
    const QRectF frame(before.x() + before.width() - size.width(), before.y() + before.height() - size.height(),
                       before.width() - m_view->width() + size.width(),
                       before.height() - m_view->height() + size.height());
    tljira::log(u" %@", QRectF(m_view->geometry()));
    tljira::log(u" %@", before);
    tljira::log(u" %@", frame);

    ownWindow->setFrame(frame, true, true);
    tljira::addFillingSubview(m_view, container);
    container->setGeometry(QRect(m_view->pos(), size));
    tljira::setHidden(container, false);
    focusFirstField(container);
}

void SessionWindowController::closeOnCancel()
{
    const auto closeIfOpen = [weak = std::weak_ptr(window())] {
        if (const auto window = weak.lock(); window && window->isVisible())
            window->close();
    };
    for (QPushButton* button : cancelButtons(m_jaLoginWindow->view()) + cancelButtons(m_body->view()))
        QObject::connect(button, &QPushButton::clicked, window()->widget(), closeIfOpen);
}

void SessionWindowController::jaValidSession()
{
    setActualView(m_downloadViewContainer);
    m_headViewController->setOkSessionView();
}

void SessionWindowController::jaInvalidSession()
{
    setActualView(m_loginViewContainer);
}

void SessionWindowController::windowWillClose(tljira::Window&)
{
    tljira::log(u"JAWindowController windowWillClose");
    tljira::Application::stopModal();
}
