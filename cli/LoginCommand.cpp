#include "cli/LoginCommand.h"

#include "cli/LineReader.h"
#include "cli/TerminalPrompt.h"
#include "cli/TerminalText.h"
#include "constants/JAConstants.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "platform/foundation/values/URL.h"
#include "records/SavedLogin.h"

namespace cli {

LoginCommand::LoginCommand(const Arguments& arguments, const Environment& environment)
    : m_client(environment.client)
    , m_interrupts(environment.interrupts)
    , m_server(arguments.operands.at(0).trimmed())
    , m_user(arguments.operands.at(1))
    , m_readsStandardInput(arguments.takesPasswordFromStandardInput)
{
}

void LoginCommand::start(const Completion& completion)
{
    const InputLine password = askForPassword();
    switch (password.kind) {
    case InputLine::Kind::Line:
        login(password.text, completion);
        break;
    case InputLine::Kind::NoLine:
        completion(Outcome::failed(QStringLiteral("No password was given.")));
        break;
    case InputLine::Kind::TooLong:
        completion(Outcome::failed(QStringLiteral("The password is too long.")));
        break;
    case InputLine::Kind::NoTerminal:
        completion(
            Outcome::failed(QStringLiteral("There is no terminal to ask for the password at; see --password-stdin.")));
        break;
    case InputLine::Kind::Interrupted:
        // The signal is handled in the event loop, and ends the command.
        break;
    }
}

InputLine LoginCommand::askForPassword() const
{
    if (m_readsStandardInput)
        return readLine(tljira::console::Input::standardInput(), m_interrupts);
    const auto server = tljira::URL::parse(m_server).value_or(tljira::URL());
    const QString prompt = QStringLiteral("Password of %1 at %2: ").arg(m_user, server.host.value_or(m_server));
    return promptForSecret(harmless(prompt), m_interrupts);
}

void LoginCommand::login(const QString& password, const Completion& completion)
{
    auto& saved = records::savedLogin();
    const auto before = saved.objectForKey(kJiraURL);
    m_changes.emplace(saved);
    m_client->setHost(m_server);
    // Another server has no business with the session.
    if (before && !records::isSameServer(*before, m_server))
        JALoginObject::resetSession();
    m_client->login(m_user, password, [this, completion](const auto& session, const auto& error) {
        if (!session)
            completion(Outcome::failed(error));
        else if (!session->sessionName() || !session->sessionValue())
            // Any answer of status 200 is accepted, a page for people to log in included.
            completion(Outcome::failed(QStringLiteral("The server’s answer opens no session.")));
        else
            completion(save());
    });
}

/// All of the login or nothing: the cookies first, since they are of no use without the session.
Outcome LoginCommand::save()
{
    if (const auto error = tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->synchronize())
        return Outcome::failed(
            QStringLiteral("The cookies could not be saved: %1.").arg(error->localizedDescription()));
    if (!m_changes->writeNow())
        return Outcome::failed(QStringLiteral("Server and session could not be saved: %1.")
                                   .arg(records::savedLogin().failure().value_or(QString())));
    m_changes.reset();
    return Outcome::done();
}

LoginCommand::~LoginCommand()
{
    if (m_changes)
        m_changes->takeBack();
}

} // namespace cli
