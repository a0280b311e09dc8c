#include "cli/LogoutCommand.h"

namespace cli {

LogoutCommand::LogoutCommand(const Arguments&, const Environment& environment)
    : m_client(environment.client)
{
}

void LogoutCommand::start(const Completion& completion)
{
    m_client->logout([completion](const auto& error) { completion(error ? Outcome::failed(error) : Outcome::done()); });
}

} // namespace cli
