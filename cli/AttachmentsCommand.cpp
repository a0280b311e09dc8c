#include "cli/AttachmentsCommand.h"

#include "cli/IssueQuestion.h"
#include "cli/JSONOutput.h"
#include "cli/TextOutput.h"
#include "records/Documents.h"

namespace cli {

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
