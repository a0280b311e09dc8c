#include "shell/JALoginWindow.h"

#include "client/JAController.h"
#include "constants/JAConstants.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/settings/Keyring.h"
#include "platform/toolkit/nib/FrameworkBundle.h"
#include "platform/toolkit/nib/InterfaceTexts.h"
#include "platform/toolkit/views/FitContent.h"
#include "platform/toolkit/views/MessageLine.h"
#include "platform/toolkit/views/PaletteColors.h"
#include "platform/toolkit/views/View.h"
#include "records/SavedLogin.h"
#include "records/TLJiraOptions.h"
#include "shell/UIViewStyle.h"

#include <algorithm>

namespace {

constexpr qint64 unauthorized = 401;

QString text(const char* source)
{
    return tljira::InterfaceTexts::shared().text("JALoginWindow", source);
}

bool isByToken()
{
    return TLJiraOptions::inUse().signIn == TLJiraOptions::SignIn::Token;
}

QString keyringText(const tljira::Error& error)
{
    const QString sentence =
        tljira::InterfaceTexts::shared().text("Keyring", tljira::Keyring::sentenceOf(error).toUtf8().constData());
    const QString detail = tljira::Keyring::detailOf(error);
    return detail.isEmpty() ? sentence : QStringLiteral("%1 (%2)").arg(sentence, detail);
}

QString failureText(const tljira::Error& error)
{
    const QString description = error.localizedDescription();
    if (error.domain == QLatin1String(tljira::Keyring::errorDomain))
        return keyringText(error);
    if (isByToken())
        return tljira::InterfaceTexts::shared().text("TokenSignIn", description.toUtf8().constData());
    return error.code == unauthorized ? QStringLiteral("Incorrect login or password") : description;
}

/// An address that is pasted often comes with blanks around it, with which it leads nowhere. For what the user does; a
/// text that code sets is left alone.
auto trimOuterBlanks(QLineEdit* field)
{
    return [field](const QString& text) {
        const QString trimmed = text.trimmed();
        if (trimmed == text)
            return;
        const qsizetype before = text.indexOf(trimmed);
        const qsizetype cursor = std::clamp<qsizetype>(field->cursorPosition() - before, 0, trimmed.size());
        field->setText(trimmed);
        field->setCursorPosition(static_cast<int>(cursor));
    };
}

/// What is read only looks like the form around it.
QPalette readOnlyPalette(const QWidget& field)
{
    const QPalette around = field.parentWidget() ? field.parentWidget()->palette() : QPalette();
    QPalette palette;
    palette.setColor(QPalette::Base, around.color(QPalette::Active, QPalette::Window));
    palette.setColor(QPalette::Text, tljira::quietColor(around));
    return palette;
}

void setReadOnly(QLineEdit* field, bool isReadOnly)
{
    if (!field)
        return;
    field->setReadOnly(isReadOnly);
    field->setPalette(isReadOnly ? readOnlyPalette(*field) : QPalette());
}

} // namespace

std::shared_ptr<JALoginWindow> JALoginWindow::init()
{
    UIViewStyle::styleLoadedViews();
    const std::shared_ptr<JALoginWindow> self(new JALoginWindow);
    self->initWithWindowNibName(QStringLiteral("JALoginWindow"), tljira::frameworkBundle());
    return self;
}

JALoginWindow::JALoginWindow()
{
    actions.bind("loginButtonAction", [this] { loginButtonAction(); });
    actions.bind("cancelAction", [this] { cancelAction(); });
}

void JALoginWindow::windowDidLoad()
{
    WindowController::windowDidLoad();
    if (loginButton())
        loginButton()->setFlat(false);
    tljira::setHidden(spiner(), true);
    if (hostTextField())
        QObject::connect(hostTextField(), &QLineEdit::textEdited, hostTextField(), trimOuterBlanks(hostTextField()));
    showOptions();
    fillInAddress();
}

void JALoginWindow::showOptions()
{
    if (TLJiraOptions::inUse().address == TLJiraOptions::Address::Whole) {
        const QString help = text(QT_TRANSLATE_NOOP("JALoginWindow", "With port and path, if it has them"));
        tljira::setText(tljira::findView<QLabel>(view(), "hostHelp"), help);
        if (hostTextField())
            hostTextField()->setAccessibleDescription(help);
    }
    if (!isByToken())
        return;
    tljira::setText(tljira::findView<QLabel>(view(), "passwordCaption"),
                    text(QT_TRANSLATE_NOOP("JALoginWindow", "API &token")));
    auto* help = tljira::findView<QLabel>(view(), "tokenHelp");
    tljira::setHidden(help, false);
    if (!passwordTextField())
        return;
    passwordTextField()->setAccessibleName(text(QT_TRANSLATE_NOOP("JALoginWindow", "API token")));
    passwordTextField()->setAccessibleDescription(tljira::text(help));
}

void JALoginWindow::fillInAddress()
{
    const QString saved = records::savedLogin().stringForKey(kJiraURL).value_or(QString());
    if (saved.isEmpty())
        return;
    tljira::setText(hostTextField(), saved);
    if (emailTextField())
        emailTextField()->setFocus();
}

void JALoginWindow::setIsLoggingIn(bool isLoggingIn)
{
    tljira::setEnabled(loginButton(), !isLoggingIn);
    tljira::setHidden(spiner(), !isLoggingIn);
    for (QLineEdit* field : {hostTextField(), emailTextField(), passwordTextField()})
        setReadOnly(field, isLoggingIn);
}

void JALoginWindow::loginButtonAction()
{
    // The keyboard waits where a refused login is mended, not wherever it goes when the button is disabled.
    if (loginButton() && loginButton()->window()->focusWidget() == loginButton() && passwordTextField())
        passwordTextField()->setFocus();
    setIsLoggingIn(true);
    if (spiner())
        spiner()->startAnimation();

    const QString email = tljira::text(emailTextField());
    const QString password = tljira::text(passwordTextField());
    const QString host = tljira::text(hostTextField());
    const auto& client = JAController::sharedInstance();
    client->setHost(host);
    tljira::log(u"host: %@", host);
    client->login(email, password, [self = sharedFrom(this)](const auto& result, const auto& error) {
        self->loginEnded(result, error);
    });
}

void JALoginWindow::loginEnded(const std::shared_ptr<const JALoginObject>& result,
                               const std::optional<tljira::Error>& error)
{
    setIsLoggingIn(false);
    if (error)
        showError(*error);
    if (!result)
        return;
    if (const auto parent = window()->sheetParent())
        parent->endSheet(window(), tljira::ModalResponse::OK);
}

void JALoginWindow::showError(const tljira::Error& error)
{
    const QWidget* label = errorLabel();
    tljira::log(u"error: %@ %@", label, error.localizedDescription());
    tljira::MessageLine::show(errorLabel(), failureText(error));
    tljira::growToFit(tljira::Window::windowOf(view()), true);
    // The code of a refusal is a status; those of the transport are negative.
    if (error.code > 0)
        askForPasswordAgain();
}

// What is typed after a refusal is a password, and no other field may show one.
void JALoginWindow::askForPasswordAgain()
{
    if (!passwordTextField())
        return;
    passwordTextField()->setFocus();
    passwordTextField()->selectAll();
}

void JALoginWindow::cancelAction()
{
    const auto entryWindow = window()->parentWindow();
    if (!entryWindow)
        return;
    if (const auto parent = entryWindow->sheetParent())
        parent->endSheet(entryWindow, tljira::ModalResponse::Cancel);
}
