#include "cli/SessionCommand.h"

#include "cli/JSONOutput.h"
#include "cli/TextOutput.h"
#include "cli/UserQuestion.h"
#include "records/SavedToken.h"

namespace cli {

namespace {

bool saysNothing(const JALoginObject& session)
{
    return !session.sessionName() && !session.previousLoginTime() && !session.lastFailedLoginTime() &&
           session.loginCount() == 0 && session.failedLoginCount() == 0;
}

QByteArray textOf(const JALoginObject& session, const std::optional<QString>& server)
{
    return textOfPairs({
        {QStringLiteral("server"), server},
        {QStringLiteral("logins"), QString::number(session.loginCount())},
        {QStringLiteral("failed logins"), QString::number(session.failedLoginCount())},
        {QStringLiteral("previous login"), session.previousLoginTime()},
        {QStringLiteral("last failed login"), session.lastFailedLoginTime()},
    });
}

QString nameOf(const records::SavedToken& token)
{
    return token.user.isEmpty() ? QStringLiteral("personal access token")
                                : QStringLiteral("API token of %1").arg(token.user);
}

} // namespace

SessionCommand::SessionCommand(const Arguments& arguments, const Environment& environment)
    : m_client(environment.client)
    , m_wantsJSON(arguments.wantsJSON)
{
}

void SessionCommand::start(const Completion& completion)
{
    m_client->updateSession([this, completion](const auto& session, const auto& error) {
        if (!session)
            completion(Outcome::failed(error));
        else if (const auto token = records::savedToken())
            completion(validToken(*token));
        else if (saysNothing(*session))
            askForUser(*m_client, [this, completion, session](const auto& user, const Outcome& failure) {
                completion(user ? validSession(*session) : failure);
            });
        else
            completion(validSession(*session));
    });
}

Outcome SessionCommand::validToken(const records::SavedToken& token) const
{
    const auto server = m_client->jiraHost();
    if (m_wantsJSON)
        return Outcome::done(jsonOfToken(server));
    return Outcome::done(textOfPairs({{QStringLiteral("server"), server}, {QStringLiteral("sign-in"), nameOf(token)}}));
}

Outcome SessionCommand::validSession(const JALoginObject& session) const
{
    const auto server = m_client->jiraHost();
    return Outcome::done(m_wantsJSON ? jsonOf(session, server) : textOf(session, server));
}

} // namespace cli
