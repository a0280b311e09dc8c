#include "cli/LoginCommand.h"

#include "cli/LineReader.h"
#include "cli/SavedInKeyring.h"
#include "cli/ServerAddress.h"
#include "cli/TerminalPrompt.h"
#include "cli/TerminalText.h"
#include "client/KeyringLogin.h"
#include "constants/JAConstants.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "platform/foundation/settings/Keyring.h"
#include "records/SavedLogin.h"

namespace cli {

LoginCommand::LoginCommand(const Arguments& arguments, const Environment& environment)
    : m_client(environment.client)
    , m_interrupts(environment.interrupts)
    , m_server(arguments.operands.at(0).trimmed())
    , m_user(arguments.operands.value(1))
    , m_usesToken(arguments.wantsToken)
    , m_readsStandardInput(arguments.takesPasswordFromStandardInput || arguments.takesTokenFromStandardInput)
    , m_wasInKeyring(savedInKeyring().has_value())
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
    if (!client::isLoginUnread()) {
        openSession(secret, completion);
        return;
    }
    // A login that has to be taken back puts it back. What is not there, or locked, the keyring says in its own time.
    client::readLogin([this, secret, completion](const auto& error) {
        if (error && error->code != static_cast<qint64>(tljira::Keyring::Problem::NotFound)) {
            completion(Outcome::failed(error));
            return;
        }
        const auto former = records::secretsInMemory();
        if (!former.isEmpty())
            m_former = {records::savedLogin().stringForKey(kJiraURL).value_or(QString()), former};
        openSession(secret, completion);
    });
}

void LoginCommand::openSession(const QString& secret, const Completion& completion)
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
            save(completion);
    });
}

/// All of the login or nothing: the cookies first, since they are of no use without the session.
void LoginCommand::save(const Completion& completion)
{
    if (const auto error = tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->synchronize()) {
        const QString reason = error->localizedDescription();
        takeBackFromKeyring(Outcome::failed(QStringLiteral("The cookies could not be saved: %1.").arg(reason)),
                            completion);
        return;
    }
    if (!m_changes->writeNow()) {
        const QString reason = records::savedLogin().failure().value_or(QString());
        takeBackFromKeyring(Outcome::failed(QStringLiteral("Server and session could not be saved: %1.").arg(reason)),
                            completion);
        return;
    }
    m_changes.reset();
    removeFromKeyring(completion);
}

void LoginCommand::takeBackFromKeyring(const Outcome& failure, const Completion& completion)
{
    if (records::usesKeyring())
        client::takeBackLogin(m_former, [failure, completion](const auto&) { completion(failure); });
    else
        completion(failure);
}

/// What an earlier login has there, when this one is in the settings.
void LoginCommand::removeFromKeyring(const Completion& completion)
{
    if (records::usesKeyring() || !m_wasInKeyring) {
        completion(Outcome::done());
        return;
    }
    client::setKeyringEntry(std::nullopt, [completion](const auto& error) {
        completion(error ? Outcome::failed(QStringLiteral("The login is saved, but the keyring has the former one: %1")
                                               .arg(error->localizedDescription()))
                         : Outcome::done());
    });
}

LoginCommand::~LoginCommand()
{
    if (m_changes)
        m_changes->takeBack();
}

} // namespace cli
