#include "cli/CommandTable.h"

#include "cli/AttachmentsCommand.h"
#include "cli/DownloadCommand.h"
#include "cli/LoginCommand.h"
#include "cli/LogoutCommand.h"
#include "cli/ServerAddress.h"
#include "cli/SessionCommand.h"
#include "cli/UploadCommand.h"
#include "cli/WhoamiCommand.h"

#include <algorithm>

namespace cli {

namespace {

template <typename T>
std::unique_ptr<Command> makeCommand(const Arguments& arguments, const Environment& environment)
{
    return std::make_unique<T>(arguments, environment);
}

std::optional<QString> noProblem(const Arguments&)
{
    return std::nullopt;
}

std::optional<QString> loginProblem(const Arguments& arguments)
{
    if (arguments.wantsToken && arguments.takesPasswordFromStandardInput)
        return QStringLiteral("login takes a password or a token, not both.");
    if (!arguments.wantsToken && arguments.operands.size() < 2)
        return QStringLiteral("login needs USER.");
    return problemOfServerAddress(arguments.operands.first().trimmed());
}

std::optional<QString> issueProblem(const Arguments& arguments)
{
    if (arguments.operands.first().trimmed().isEmpty())
        return QStringLiteral("The issue's key is empty.");
    if (arguments.destination && arguments.destination->isEmpty())
        return QStringLiteral("The path after --to is empty.");
    return std::nullopt;
}

std::optional<QString> attachmentsProblem(const Arguments& arguments)
{
    if (const auto problem = issueProblem(arguments))
        return problem;
    if (arguments.wantsAll && !arguments.documents.isEmpty())
        return QStringLiteral("attachments takes --all or --documents, not both.");
    return AttachmentsCommand::problemOfDocuments(arguments.documents);
}

std::optional<QString> uploadProblem(const Arguments& arguments)
{
    if (const auto problem = issueProblem(arguments))
        return problem;
    return UploadCommand::problemOfName(UploadCommand::attachmentName(arguments));
}

} // namespace

const std::vector<CommandDescription>& commandTable()
{
    static const QString all = QStringLiteral("all");
    static const QString json = QStringLiteral("json");
    static const QString key = QStringLiteral("KEY");
    static const std::vector<CommandDescription> table = {
        {QStringLiteral("login"),
         {QStringLiteral("SERVER"), QStringLiteral("USER")},
         {QStringLiteral("password-stdin"), QStringLiteral("token"), QStringLiteral("token-stdin"),
          QStringLiteral("keyring")},
         false,
         loginProblem,
         makeCommand<LoginCommand>,
         1,
         false},
        {QStringLiteral("session"), {}, {json}, true, noProblem, makeCommand<SessionCommand>},
        {QStringLiteral("whoami"), {}, {json}, true, noProblem, makeCommand<WhoamiCommand>},
        {QStringLiteral("attachments"),
         {key},
         {all, QStringLiteral("documents"), json},
         true,
         attachmentsProblem,
         makeCommand<AttachmentsCommand>},
        {QStringLiteral("upload"),
         {key, QStringLiteral("FILE")},
         {QStringLiteral("name")},
         true,
         uploadProblem,
         makeCommand<UploadCommand>},
        {QStringLiteral("download"),
         {key, QStringLiteral("NAME|ID")},
         {QStringLiteral("to")},
         true,
         issueProblem,
         makeCommand<DownloadCommand>},
        {QStringLiteral("logout"), {}, {}, true, noProblem, makeCommand<LogoutCommand>, 0, false},
    };
    return table;
}

const CommandDescription* findCommand(const QString& name)
{
    const auto& table = commandTable();
    const auto found =
        std::find_if(table.begin(), table.end(), [&](const auto& description) { return description.name == name; });
    return found == table.end() ? nullptr : &*found;
}

} // namespace cli
