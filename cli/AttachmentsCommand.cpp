#include "cli/AttachmentsCommand.h"

#include "cli/IssueQuestion.h"
#include "cli/JSONOutput.h"
#include "cli/TextOutput.h"
#include "platform/foundation/files/PathString.h"
#include "records/Documents.h"

namespace cli {

namespace {

const QString allOfThem = QStringLiteral("all");

} // namespace

std::vector<TLJiraOptions::DocumentKind> AttachmentsCommand::documentKinds(const QStringList& documents)
{
    if (documents.isEmpty())
        return TLJiraOptions::defaultDocuments();
    std::vector<TLJiraOptions::DocumentKind> kinds;
    if (documents.contains(allOfThem))
        return kinds;
    for (const QString& extension : documents)
        kinds.push_back({extension});
    return kinds;
}

std::optional<QString> AttachmentsCommand::problemOfDocuments(const QStringList& documents)
{
    for (const QString& document : documents) {
        const QString extension = document.startsWith(u'.') ? document.mid(1) : document;
        if (extension.isEmpty() || tljira::pathExtension(QStringLiteral("name.") + extension) != extension)
            return QStringLiteral("“%1” is no extension of a name.").arg(document);
    }
    return std::nullopt;
}

AttachmentsCommand::AttachmentsCommand(const Arguments& arguments, const Environment& environment)
    : m_client(environment.client)
    , m_key(arguments.operands.at(0))
    , m_wantsAll(arguments.wantsAll)
    , m_wantsJSON(arguments.wantsJSON)
{
}

void AttachmentsCommand::start(const Completion& completion)
{
    askForIssue(*m_client, m_key, [this, completion](const auto& issue, const Outcome& failure) {
        completion(issue ? list(*issue) : failure);
    });
}

Outcome AttachmentsCommand::list(const JAIssueObject& issue) const
{
    const auto attachments = m_wantsAll ? issue.attachments() : documentsNewestFirst(issue.attachments());
    return Outcome::done(m_wantsJSON ? jsonOf(attachments) : textOfAttachments(attachments));
}

} // namespace cli
