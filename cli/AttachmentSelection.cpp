#include "cli/AttachmentSelection.h"

#include "platform/foundation/PathString.h"

#include <algorithm>
#include <iterator>

namespace cli {

namespace {

using Attachment = std::shared_ptr<const JAAttachmentObject>;

bool isDocument(const Attachment& attachment)
{
    return attachment->name() && tljira::pathExtension(*attachment->name()) == u"tessaloom";
}

bool isNewer(const Attachment& one, const Attachment& other)
{
    return one->date() && (!other->date() || *one->date() > *other->date());
}

} // namespace

JAIssueObject::Attachments documentsNewestFirst(const JAIssueObject::Attachments& attachments)
{
    JAIssueObject::Attachments documents;
    std::copy_if(attachments.begin(), attachments.end(), std::back_inserter(documents), isDocument);
    std::stable_sort(documents.begin(), documents.end(), isNewer);
    return documents;
}

Attachment findAttachment(const JAIssueObject::Attachments& attachments, const QString& nameOrID)
{
    Attachment newest;
    for (const Attachment& attachment : attachments) {
        if (attachment->ID() == nameOrID)
            return attachment;
        if (attachment->name() == nameOrID && (!newest || !isNewer(newest, attachment)))
            newest = attachment;
    }
    return newest;
}

} // namespace cli
