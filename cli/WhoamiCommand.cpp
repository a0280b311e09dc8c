#include "cli/WhoamiCommand.h"

#include "cli/JSONOutput.h"
#include "cli/TextOutput.h"
#include "cli/UserQuestion.h"

namespace cli {

namespace {

QByteArray textOf(const JAUser& user)
{
    return textOfPairs({
        {QStringLiteral("name"), user.name()},
        {QStringLiteral("display name"), user.displayName()},
        {QStringLiteral("e-mail"), user.email()},
        {QStringLiteral("key"), user.key()},
        {QStringLiteral("time zone"), user.timeZone()},
        {QStringLiteral("picture"), user.avatarUrl()},
    });
}

} // namespace

WhoamiCommand::WhoamiCommand(const Arguments& arguments, const Environment& environment)
    : m_client(environment.client)
    , m_wantsJSON(arguments.wantsJSON)
{
}

void WhoamiCommand::start(const Completion& completion)
{
    askForUser(*m_client, [this, completion](const auto& user, const Outcome& failure) {
        if (user)
            completion(Outcome::done(m_wantsJSON ? jsonOf(*user) : textOf(*user)));
        else
            completion(failure);
    });
}

} // namespace cli
