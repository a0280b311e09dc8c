#include "cli/Outcome.h"

#include "platform/foundation/Log.h"

namespace cli {

Outcome Outcome::done(QByteArray output)
{
    return {ExitStatus::Done, std::move(output), {}};
}

Outcome Outcome::failed(const QString& reason)
{
    return {ExitStatus::Failed, {}, reason};
}

Outcome Outcome::failed(const std::optional<tljira::Error>& error)
{
    if (!error)
        return failed(QStringLiteral("The server sent no answer."));
    if (error->userInfo)
        tljira::log(u"Answer: %@", error->userInfo);
    return failed(error->localizedDescription());
}

} // namespace cli
