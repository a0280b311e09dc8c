#include "shell/JALoginWindow.h"

#include "client/JAController.h"
#include "constants/FrameworkBundle.h"
#include "constants/JAConstants.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/UserDefaults.h"
#include "platform/toolkit/FitContent.h"
#include "platform/toolkit/MessageLine.h"
#include "platform/toolkit/PaletteColors.h"
#include "platform/toolkit/View.h"
#include "shell/UIViewStyle.h"

#include <algorithm>

namespace {

constexpr qint64 unauthorized = 401;

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
    self->initWithWindowNibName(QStringLiteral("JALoginWindow"),
                                tljira::Bundle::bundleWithIdentifier(QLatin1String(frameworkBundleIdentifier)));
    return self;
}

JALoginWindow::JALoginWindow()
{
    outlets.bind("view", &m_view);
    outlets.bind("hostTextField", &m_hostTextField);
    outlets.bind("emailTextField", &m_emailTextField);
    outlets.bind("passwordTextField", &m_passwordTextField);
    outlets.bind("errorLabel", &m_errorLabel);
    outlets.bind("loginButton", &m_loginButton);
    outlets.bind("cancelButton", &m_cancelButton);
    outlets.bind("spiner", &m_spiner);
    actions.bind("loginButtonAction", [this] { loginButtonAction(); });
    actions.bind("cancelAction", [this] { cancelAction(); });
}

void JALoginWindow::windowDidLoad()
{
    WindowController::windowDidLoad();
    if (m_loginButton)
        m_loginButton->setFlat(false);
    tljira::setHidden(m_spiner, true);
    if (m_hostTextField)
        QObject::connect(m_hostTextField, &QLineEdit::textEdited, m_hostTextField, trimOuterBlanks(m_hostTextField));
    fillInAddress();
}

void JALoginWindow::fillInAddress()
{
    const QString saved = tljira::UserDefaults::standardUserDefaults().stringForKey(kJiraURL).value_or(QString());
    if (saved.isEmpty())
        return;
    tljira::setText(m_hostTextField, saved);
    if (m_emailTextField)
        m_emailTextField->setFocus();
}

void JALoginWindow::setIsLoggingIn(bool isLoggingIn)
{
    tljira::setEnabled(m_loginButton, !isLoggingIn);
    tljira::setHidden(m_spiner, !isLoggingIn);
    for (QLineEdit* field : {m_hostTextField.get(), m_emailTextField.get(), m_passwordTextField.get()})
        setReadOnly(field, isLoggingIn);
}

void JALoginWindow::loginButtonAction()
{
    // The keyboard waits where a refused login is mended, not wherever it goes when the button is disabled.
    if (m_loginButton && m_loginButton->window()->focusWidget() == m_loginButton && m_passwordTextField)
        m_passwordTextField->setFocus();
    setIsLoggingIn(true);
    if (m_spiner)
        m_spiner->startAnimation();

    const QString email = tljira::text(m_emailTextField);
    const QString password = tljira::text(m_passwordTextField);
    const QString host = tljira::text(m_hostTextField);
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
    const QWidget* label = m_errorLabel;
    tljira::log(u"error: %@ %@", label, error.localizedDescription());
    tljira::MessageLine::show(m_errorLabel, error.code == unauthorized ? QStringLiteral("Incorrect login or password")
                                                                       : error.localizedDescription());
    tljira::growToFit(tljira::Window::windowOf(m_view), true);
    // The code of a refusal is a status; those of the transport are negative.
    if (error.code > 0)
        askForPasswordAgain();
}

// What is typed after a refusal is a password, and no other field may show one.
void JALoginWindow::askForPasswordAgain()
{
    if (!m_passwordTextField)
        return;
    m_passwordTextField->setFocus();
    m_passwordTextField->selectAll();
}

void JALoginWindow::cancelAction()
{
    const auto entryWindow = window()->parentWindow();
    if (!entryWindow)
        return;
    if (const auto parent = entryWindow->sheetParent())
        parent->endSheet(entryWindow, tljira::ModalResponse::Cancel);
}
