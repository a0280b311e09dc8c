#include "cli/LogoutCommand.h"

#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "records/SavedLogin.h"
#include "records/TLJiraOptions.h"

namespace cli {

namespace {

QString whatIsSaved()
{
    return TLJiraOptions::inUse().signIn == TLJiraOptions::SignIn::Token && !records::usesKeyring()
               ? QStringLiteral("The server’s address and the token")
               : QStringLiteral("The server’s address");
}

/// What of the login is still on the disk; empty when all of it has gone.
QStringList leftOnDisk()
{
    QStringList left;
    auto& saved = records::savedLogin();
    if (!saved.synchronize())
        left << QStringLiteral("%1 could not be removed: %2.").arg(whatIsSaved(), saved.failure().value_or(QString()));
    if (const auto error = tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->synchronize())
        left << QStringLiteral("The cookies could not be removed: %1.").arg(error->localizedDescription());
    return left;
}

} // namespace

LogoutCommand::LogoutCommand(const Arguments&, const Environment& environment)
    : m_client(environment.client)
{
}

void LogoutCommand::start(const Completion& completion)
{
    m_client->logout([completion](const auto& error) {
        QStringList problems = leftOnDisk();
        if (error)
            problems.prepend(error->localizedDescription());
        completion(problems.isEmpty() ? Outcome::done() : Outcome::failed(problems.join(u' ')));
    });
}

} // namespace cli
