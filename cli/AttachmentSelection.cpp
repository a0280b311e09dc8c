#include "cli/AttachmentSelection.h"

#include "records/Documents.h"

namespace cli {

std::shared_ptr<const JAAttachmentObject> findAttachment(const JAIssueObject::Attachments& attachments,
                                                         const QString& nameOrID)
{
    std::shared_ptr<const JAAttachmentObject> newest;
    for (const auto& attachment : attachments) {
        if (attachment->ID() == nameOrID)
            return attachment;
        if (attachment->name() == nameOrID && (!newest || !isNewer(*newest, *attachment)))
            newest = attachment;
    }
    return newest;
}

} // namespace cli
