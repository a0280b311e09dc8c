#include "shell/JAHeadViewController.h"

#include "client/JAController.h"
#include "client/ServerName.h"
#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/settings/Keyring.h"
#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Window.h"
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
    actions.bind("loginAction", [this] { loginAction(); });
    actions.bind("logOutAction", [this] { logOutAction(); });
}

void JAHeadViewController::viewDidLoad()
{
    ViewController::viewDidLoad();
    tljira::addSubview(view(), okSessionView());
    makeRoomForPanel();
    if (findSessionProgressIndicator())
        findSessionProgressIndicator()->startAnimation();
    m_jaLoginWindow = JALoginWindow::init();
}

void JAHeadViewController::viewWillLayout()
{
    ViewController::viewWillLayout();
    if (!okSessionView())
        return;
    // Laying out what is in sight asks for the next layout, and that for another, without end.
    if (okSessionView()->isVisible())
        view()->setMinimumHeight(tljira::neededSizeAsLaidOut(okSessionView()).height());
    else
        makeRoomForPanel();
    okSessionView()->setGeometry(view()->rect());
}

// The panel lies above the header's own layout, which knows nothing of its height.
void JAHeadViewController::makeRoomForPanel()
{
    if (okSessionView())
        view()->setMinimumHeight(tljira::neededSize(okSessionView()).height());
}

void JAHeadViewController::setActualView(QWidget* view)
{
    tljira::setHidden(okSessionView(), true);
    tljira::setHidden(view, false);
    // The panel covers it; nobody is to come upon its button with the keyboard or a screen reader.
    tljira::setHidden(tljira::findView<QWidget>(this->view(), "waitingView"), view && view == okSessionView());
}

void JAHeadViewController::setOkSessionView()
{
    const auto& client = JAController::sharedInstance();
    if (!client->jaSession())
        return;
    setActualView(okSessionView());
    ++m_lookUps;
    showServer();
    showLookUp();
    client->getCurrentUser([self = sharedFrom(this), number = ++m_newestLookUp](const auto& user, const auto&) {
        --self->m_lookUps;
        // An earlier answer may be about somebody who has logged out since.
        if (number == self->m_newestLookUp)
            self->showUser(user);
        self->showLookUp();
    });
}

void JAHeadViewController::showLookUp()
{
    const bool isUnderWay = m_lookUps > 0;
    const bool isNobodyKnown = tljira::text(displayNameLabel()).isEmpty() && tljira::text(nameLabel()).isEmpty();
    tljira::setHidden(tljira::findView<QWidget>(okSessionView(), "lookupLabel"), !isUnderWay || !isNobodyKnown);
    auto* indicator = tljira::findView<tljira::ProgressIndicator>(okSessionView(), "lookupIndicator");
    tljira::setHidden(indicator, !isUnderWay);
    if (indicator && isUnderWay)
        indicator->startAnimation();
    else if (indicator)
        indicator->stopAnimation();
}

// The picture of nobody in particular, where there is none of the user.
void JAHeadViewController::showPlaceholder()
{
    const bool hasPicture = avatarImage() && !avatarImage()->image().isNull();
    tljira::setHidden(avatarImage(), !hasPicture);
    tljira::setHidden(tljira::findView<QWidget>(okSessionView(), "avatarPlaceholder"), hasPicture);
}

void JAHeadViewController::showUser(const std::shared_ptr<const JAUser>& user)
{
    const auto text = [&user](auto property) {
        return user ? (user.get()->*property)().value_or(QString()) : QString();
    };
    tljira::setText(emailLabel(), text(&JAUser::email));
    tljira::setText(displayNameLabel(), text(&JAUser::displayName));
    tljira::setText(nameLabel(), text(&JAUser::name));
    showServer();
    // Some scripts are higher than others.
    makeRoomForPanel();
    tljira::growToFit(window(), true);
    setAvatarByURL(user ? user->avatarUrl() : std::nullopt);
}

void JAHeadViewController::showServer()
{
    const QString server = client::serverName();
    const bool standsAlone = server.isEmpty() || tljira::text(nameLabel()).isEmpty();
    tljira::setText(tljira::findView<QLabel>(okSessionView(), "serverLabel"),
                    standsAlone ? server : QStringLiteral("· ") + server);
    // An empty one would keep the server's name from the beginning of the line; without the server it keeps the line.
    tljira::setHidden(nameLabel(), standsAlone && !server.isEmpty());
}

void JAHeadViewController::setAvatarByURL(const std::optional<QString>& url)
{
    JAController::sharedInstance()->sendGetRequest(
        url, [self = sharedFrom(this), number = ++m_newestAvatar](const auto& body, const auto& error, const auto&) {
            if (!error && number == self->m_newestAvatar)
                self->showAvatar(body.value_or(QByteArray()), number);
        });
}

// The decoding thread hands its reference back with the image: views must not go on another thread than the main one.
void JAHeadViewController::showAvatar(const QByteArray& bytes, quint64 number)
{
    tljira::GlobalQueue::instance().addOperation([self = sharedFrom(this), number, bytes]() mutable {
        const QImage image = tljira::ImageView::decode(bytes, largestAvatarSide);
        tljira::MainQueue::instance().addOperation([self = std::move(self), number, image] {
            if (!self->avatarImage() || number != self->m_newestAvatar)
                return;
            self->avatarImage()->setImage(image);
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
    const auto& client = JAController::sharedInstance();
    client->logout([client](const auto& error) {
        const bool isOfKeyring = error && error->domain == QLatin1String(tljira::Keyring::errorDomain);
        if (const auto receiver = client->delegate(); receiver && isOfKeyring)
            receiver->jaControlleLogoutCompletion(false, error);
    });
}
