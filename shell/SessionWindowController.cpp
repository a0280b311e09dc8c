#include "shell/SessionWindowController.h"

#include "client/JAController.h"
#include "client/ServerName.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/settings/Keyring.h"
#include "platform/toolkit/nib/FrameworkBundle.h"
#include "platform/toolkit/nib/InterfaceTexts.h"
#include "platform/toolkit/views/FillingSubview.h"
#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/ProgressIndicator.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Application.h"
#include "shell/JAHeadViewController.h"
#include "shell/JALoginWindow.h"
#include "shell/SubviewCount.h"
#include "shell/UIViewStyle.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace {

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
    actions.bind("cancelAction", [this] { cancelAction(); });
}

SessionWindowController::~SessionWindowController() = default;

void SessionWindowController::initWithNib()
{
    UIViewStyle::styleLoadedViews();
    initWithWindowNibName(QStringLiteral("JMWindowController"), tljira::frameworkBundle());
}

void SessionWindowController::initSession(const BodyMaker& makeBody)
{
    m_jaLoginWindow = JALoginWindow::init();
    const auto& client = JAController::sharedInstance();
    client->setPathFile(QString());
    client->setDelegate(sharedFrom(this));
    const auto bundle = tljira::frameworkBundle();
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
    const std::weak_ptr<SessionWindowController> weak = sharedFrom(this);
    JAController::sharedInstance()->updateSession([weak](const auto&, const auto& error) {
        if (const auto self = weak.lock())
            self->showKeyringProblem(error);
    });
}

// Of all that can keep a user from a session this is what the form cannot mend. It is there in the next turn.
void SessionWindowController::showKeyringProblem(const std::optional<tljira::Error>& error)
{
    if (!error || error->domain != QLatin1String(tljira::Keyring::errorDomain))
        return;
    tljira::MainQueue::instance().addOperation([form = m_jaLoginWindow, error] { form->showError(*error); });
}

void SessionWindowController::showThatSessionIsLookedFor()
{
    if (auto* indicator = tljira::findView<tljira::ProgressIndicator>(view(), "connectingIndicator"))
        indicator->startAnimation();
    auto* label = tljira::findView<QLabel>(view(), "connectingLabel");
    if (!label)
        return;
    const int initialWidth = view()->width();
    const QString host = client::serverName();
    if (!host.isEmpty())
        label->setText(text(QT_TRANSLATE_NOOP("JMWindowController", "Looking for your session on %1…")).arg(host));
    // On several lines only where one is too short: a text that may wrap does so early.
    label->setWordWrap(tljira::neededSize(view()).width() > initialWidth);
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
    QSize size = tljira::neededSize(view());
    const QList<QWidget*> states{loginViewContainer(), downloadViewContainer()};
    for (QWidget* state : states)
        size.setWidth(std::max(size.width(), state ? tljira::neededSize(state).width() : 0));
    for (QWidget* state : states) {
        if (state)
            state->resize(size.width(), std::max(state->height(), tljira::neededSize(state).height()));
    }
    tljira::growTo(size, window(), false);
}

void SessionWindowController::setLoginViews()
{
    window()->addChildWindow(m_jaLoginWindow->window(), tljira::Window::Ordered::Below);
    QWidget* form = m_jaLoginWindow->view();
    if (!loginViewContainer() || !form)
        return;
    const QRect frame = form->geometry();
    tljira::addFillingSubview(loginViewContainer(), form);
    loginViewContainer()->setGeometry(frame);
}

void SessionWindowController::setDownloadViews()
{
    tljira::addFillingSubview(bodyView(), m_body->view());
    tljira::addFillingSubview(headView(), m_headViewController->view());
    // One interface file serves the windows of both jobs; the panel's says which it is.
    if (const QString title = m_body->view()->windowTitle(); !title.isEmpty())
        window()->setTitle(title);
    if (downloadViewContainer()) {
        downloadViewContainer()->resize(
            tljira::neededSize(downloadViewContainer()).expandedTo(downloadViewContainer()->sizeHint()));
        tljira::layoutSubtreeIfNeeded(downloadViewContainer());
    }
    noteSubviewCount(*m_body);
    noteSubviewCount(*m_headViewController);
}

// Whoever watches the window sees its upper right corner move by the size of the decorations: the place is worked out
// from the container's own size, the size with the decorations.
void SessionWindowController::setActualView(QWidget* container)
{
    const auto ownWindow = windowIfLoaded();
    if (!ownWindow || !view() || !container)
        return;
    tljira::layoutSubtreeIfNeeded(container);
    const QSize size = container->size();
    removeSubviews(view(), container, {downloadViewContainer(), loginViewContainer()});
    tljira::addSubview(view(), container);

    const QRectF before = ownWindow->frame();
    const QRectF frame(before.x() + before.width() - size.width(), before.y() + before.height() - size.height(),
                       before.width() - view()->width() + size.width(),
                       before.height() - view()->height() + size.height());
    tljira::log(u" %@", QRectF(view()->geometry()));
    tljira::log(u" %@", before);
    tljira::log(u" %@", frame);

    ownWindow->setFrame(frame, true, true);
    tljira::addFillingSubview(view(), container);
    container->setGeometry(QRect(view()->pos(), size));
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
    setActualView(downloadViewContainer());
    m_headViewController->setOkSessionView();
}

void SessionWindowController::jaInvalidSession()
{
    setActualView(loginViewContainer());
}

void SessionWindowController::jaControlleLogoutCompletion(bool, const std::optional<tljira::Error>& error)
{
    showKeyringProblem(error);
}

void SessionWindowController::windowWillClose(tljira::Window&)
{
    tljira::log(u"JAWindowController windowWillClose");
    tljira::Application::stopModal();
}
