#include "shell/JAHeadViewController.h"

#include "client/JAController.h"
#include "client/ServerName.h"
#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/MainQueue.h"
#include "platform/toolkit/FitContent.h"
#include "platform/toolkit/View.h"
#include "platform/toolkit/Window.h"
#include "shell/JALoginWindow.h"
#include "shell/UIViewStyle.h"

namespace {

/// Pixels; enough for the avatar on any screen, whatever the server sends.
constexpr int largestAvatarSide = 256;

} // namespace

std::shared_ptr<JAHeadViewController> JAHeadViewController::initWithNibName(const QString& name,
                                                                            const std::optional<tljira::Bundle>& bundle)
{
    UIViewStyle::styleLoadedViews();
    const std::shared_ptr<JAHeadViewController> self(new JAHeadViewController);
    self->ViewController::initWithNibName(name, bundle);
    return self;
}

JAHeadViewController::JAHeadViewController()
{
    outlets.bind("okSessionView", &m_okSessionView);
    outlets.bind("findSessionProgressIndicator", &m_findSessionProgressIndicator);
    outlets.bind("avatarImage", &m_avatarImage);
    outlets.bind("nameLabel", &m_nameLabel);
    outlets.bind("displayNameLabel", &m_displayNameLabel);
    outlets.bind("emailLabel", &m_emailLabel);
    actions.bind("loginAction", [this] { loginAction(); });
    actions.bind("logOutAction", [this] { logOutAction(); });
}

void JAHeadViewController::viewDidLoad()
{
    ViewController::viewDidLoad();
    tljira::addSubview(view(), m_okSessionView);
    makeRoomForPanel();
    showPlaceholder();
    if (m_findSessionProgressIndicator)
        m_findSessionProgressIndicator->startAnimation();
    m_jaLoginWindow = JALoginWindow::init();
}

void JAHeadViewController::viewWillLayout()
{
    ViewController::viewWillLayout();
    if (!m_okSessionView)
        return;
    makeRoomForPanel();
    m_okSessionView->setGeometry(view()->rect());
}

// The panel lies above the header's own layout, which knows nothing of its height.
void JAHeadViewController::makeRoomForPanel()
{
    if (m_okSessionView)
        view()->setMinimumHeight(tljira::neededSize(m_okSessionView).height());
}

void JAHeadViewController::setActualView(QWidget* view)
{
    tljira::setHidden(m_okSessionView, true);
    tljira::setHidden(view, false);
    // The panel covers them; nobody is to come upon them with the keyboard or a screen reader.
    tljira::setHidden(tljira::findView<QWidget>(this->view(), "waitingView"), view && view == m_okSessionView);
    for (QPushButton* button : buttonsBelowPanel())
        tljira::setHidden(button, view && view == m_okSessionView);
}

QList<QPushButton*> JAHeadViewController::buttonsBelowPanel()
{
    QList<QPushButton*> buttons = view() ? view()->findChildren<QPushButton*>() : QList<QPushButton*>();
    buttons.removeIf([this](const QPushButton* button) { return m_okSessionView->isAncestorOf(button); });
    return buttons;
}

void JAHeadViewController::setOkSessionView()
{
    const auto& client = JAController::sharedInstance();
    if (!client->jaSession())
        return;
    setActualView(m_okSessionView);
    ++m_lookUps;
    showServer();
    showLookUp();
    client->getCurrentUser([self = sharedFrom(this)](const auto& user, const auto&) {
        --self->m_lookUps;
        self->showUser(user);
        self->showLookUp();
    });
}

void JAHeadViewController::showLookUp()
{
    const bool isUnderWay = m_lookUps > 0;
    const bool isNobodyKnown = tljira::text(m_displayNameLabel).isEmpty() && tljira::text(m_nameLabel).isEmpty();
    tljira::setHidden(tljira::findView<QWidget>(m_okSessionView, "lookupLabel"), !isUnderWay || !isNobodyKnown);
    auto* indicator = tljira::findView<tljira::ProgressIndicator>(m_okSessionView, "lookupIndicator");
    tljira::setHidden(indicator, !isUnderWay);
    if (indicator && isUnderWay)
        indicator->startAnimation();
    else if (indicator)
        indicator->stopAnimation();
}

// The picture of nobody in particular, where there is none of the user.
void JAHeadViewController::showPlaceholder()
{
    const bool hasPicture = m_avatarImage && !m_avatarImage->image().isNull();
    tljira::setHidden(m_avatarImage, !hasPicture);
    tljira::setHidden(tljira::findView<QWidget>(m_okSessionView, "avatarPlaceholder"), hasPicture);
}

void JAHeadViewController::showUser(const std::shared_ptr<const JAUser>& user)
{
    const auto text = [&user](auto property) {
        return user ? (user.get()->*property)().value_or(QString()) : QString();
    };
    tljira::setText(m_emailLabel, text(&JAUser::email));
    tljira::setText(m_displayNameLabel, text(&JAUser::displayName));
    tljira::setText(m_nameLabel, text(&JAUser::name));
    showServer();
    // Some scripts are higher than others.
    makeRoomForPanel();
    tljira::growToFit(window(), true);
    setAvatarByURL(user ? user->avatarUrl() : std::nullopt);
}

void JAHeadViewController::showServer()
{
    const QString server = client::serverName();
    const bool standsAlone = server.isEmpty() || tljira::text(m_nameLabel).isEmpty();
    tljira::setText(tljira::findView<QLabel>(m_okSessionView, "serverLabel"),
                    standsAlone ? server : QStringLiteral("· ") + server);
}

void JAHeadViewController::setAvatarByURL(const std::optional<QString>& url)
{
    JAController::sharedInstance()->sendGetRequest(
        url, [self = sharedFrom(this)](const auto& body, const auto& error, const auto&) {
            if (!error)
                self->showAvatar(body.value_or(QByteArray()));
        });
}

// The decoding thread hands its reference back with the image: views must not go on another thread than the main one.
void JAHeadViewController::showAvatar(const QByteArray& bytes)
{
    const quint64 number = ++m_newestAvatar;
    tljira::GlobalQueue::instance().addOperation([self = sharedFrom(this), number, bytes]() mutable {
        const QImage image = tljira::ImageView::decode(bytes, largestAvatarSide);
        tljira::MainQueue::instance().addOperation([self = std::move(self), number, image] {
            if (!self->m_avatarImage || number != self->m_newestAvatar)
                return;
            self->m_avatarImage->setImage(image);
            self->showPlaceholder();
        });
    });
}

void JAHeadViewController::loginAction()
{
    const auto ownWindow = window();
    if (!ownWindow)
        return;
    ownWindow->beginSheet(m_jaLoginWindow->window(), [self = sharedFrom(this)](int returnCode) {
        if (returnCode == tljira::ModalResponse::OK)
            self->setOkSessionView();
    });
    endSheetAtCancel();
}

// The form's own action ends another sheet, the one that an entry window is.
void JAHeadViewController::endSheetAtCancel()
{
    QObject::disconnect(m_cancelConnection);
    const QPushButton* button = m_jaLoginWindow->cancelButton();
    if (!button)
        return;
    m_cancelConnection =
        QObject::connect(button, &QPushButton::clicked, button, [weak = std::weak_ptr(m_jaLoginWindow->window())] {
            const auto sheet = weak.lock();
            if (const auto parent = sheet ? sheet->sheetParent() : nullptr)
                parent->endSheet(sheet, tljira::ModalResponse::Cancel);
        });
}

void JAHeadViewController::logOutAction()
{
    JAController::sharedInstance()->logout({});
}
