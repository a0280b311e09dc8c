#include "records/Documents.h"

#include "constants/DocumentExtension.h"
#include "platform/foundation/files/PathString.h"

#include <algorithm>
#include <iterator>

JAIssueObject::Attachments documentsAmong(const JAIssueObject::Attachments& attachments)
{
    JAIssueObject::Attachments documents;
    std::copy_if(attachments.begin(), attachments.end(), std::back_inserter(documents), [](const auto& attachment) {
        return attachment->name() && tljira::pathExtension(*attachment->name()) == documentExtension;
    });
    return documents;
}

JAIssueObject::Attachments documentsNewestFirst(const JAIssueObject::Attachments& attachments)
{
    JAIssueObject::Attachments documents = documentsAmong(attachments);
    std::stable_sort(documents.begin(), documents.end(),
                     [](const auto& one, const auto& other) { return isNewer(*one, *other); });
    return documents;
}

// std::optional orders nothing before any value.
bool isNewer(const JAAttachmentObject& one, const JAAttachmentObject& other)
{
    return one.date() > other.date();
}
