#include "cli/LoginCommand.h"

#include "cli/LineReader.h"
#include "cli/ServerAddress.h"
#include "cli/TerminalPrompt.h"
#include "cli/TerminalText.h"
#include "constants/JAConstants.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "records/SavedLogin.h"

namespace cli {

LoginCommand::LoginCommand(const Arguments& arguments, const Environment& environment)
    : m_client(environment.client)
    , m_interrupts(environment.interrupts)
    , m_server(arguments.operands.at(0).trimmed())
    , m_user(arguments.operands.value(1))
    , m_usesToken(arguments.wantsToken)
    , m_readsStandardInput(arguments.takesPasswordFromStandardInput || arguments.takesTokenFromStandardInput)
{
}

void LoginCommand::start(const Completion& completion)
{
    const QString secretName = m_usesToken ? QStringLiteral("token") : QStringLiteral("password");
    const InputLine secret = askForSecret();
    switch (secret.kind) {
    case InputLine::Kind::Line:
        login(secret.text, completion);
        break;
    case InputLine::Kind::NoLine:
        completion(Outcome::failed(QStringLiteral("No %1 was given.").arg(secretName)));
        break;
    case InputLine::Kind::TooLong:
        completion(Outcome::failed(QStringLiteral("The %1 is too long.").arg(secretName)));
        break;
    case InputLine::Kind::Unreadable:
        completion(Outcome::failed(QStringLiteral("The %1 couldn’t be read.").arg(secretName)));
        break;
    case InputLine::Kind::NoTerminal:
        completion(Outcome::failed(
            QStringLiteral("There is no terminal to ask for the %1 at; see --%1-stdin.").arg(secretName)));
        break;
    case InputLine::Kind::Interrupted:
        // The signal is handled in the event loop, and ends the command.
        break;
    }
}

InputLine LoginCommand::askForSecret() const
{
    if (m_readsStandardInput)
        return readLine(tljira::console::Input::standardInput(), m_interrupts);
    return promptForSecret(harmless(prompt()), m_interrupts);
}

QString LoginCommand::prompt() const
{
    const QString server = serverName(m_server);
    if (!m_usesToken)
        return QStringLiteral("Password of %1 at %2: ").arg(m_user, server);
    if (m_user.isEmpty())
        return QStringLiteral("Personal access token for %1: ").arg(server);
    return QStringLiteral("API token of %1 at %2: ").arg(m_user, server);
}

void LoginCommand::login(const QString& secret, const Completion& completion)
{
    auto& saved = records::savedLogin();
    const auto before = saved.objectForKey(kJiraURL);
    m_changes.emplace(saved);
    m_client->setHost(m_server);
    // Another server has no business with the session.
    if (before && !records::isSameServer(*before, m_server))
        JALoginObject::resetSession();
    m_client->login(m_user, secret, [this, completion](const auto& session, const auto& error) {
        if (!session)
            completion(Outcome::failed(error));
        else if (!m_usesToken && (!session->sessionName() || !session->sessionValue()))
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
