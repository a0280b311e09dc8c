#include "cli/AttachmentsCommand.h"

#include "cli/AttachmentSelection.h"
#include "cli/IssueKey.h"
#include "cli/JSONOutput.h"
#include "cli/TextOutput.h"
#include "cli/UserQuestion.h"

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
    m_client->getIssueObject(escapedKey(m_key), [this, completion](const auto& issue, const auto& error) {
        if (!issue)
            completion(Outcome::failed(error));
        else if (issue->attachments().empty())
            // An answer that is no issue looks the same, and must not pass for one without attachments.
            askForUser(*m_client, [this, completion, issue](const auto& user, const Outcome& failure) {
                completion(user ? list(*issue) : failure);
            });
        else
            completion(list(*issue));
    });
}

Outcome AttachmentsCommand::list(const JAIssueObject& issue) const
{
    const auto attachments = m_wantsAll ? issue.attachments() : documentsNewestFirst(issue.attachments());
    return Outcome::done(m_wantsJSON ? jsonOf(attachments) : textOfAttachments(attachments));
}

} // namespace cli
