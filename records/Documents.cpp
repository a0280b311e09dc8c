#include "records/Documents.h"

#include "platform/foundation/files/PathString.h"
#include "records/TLJiraOptions.h"

#include <algorithm>
#include <iterator>

namespace {

bool isOfAKind(const QString& name, const std::vector<TLJiraOptions::DocumentKind>& kinds)
{
    const QString extension = tljira::pathExtension(name);
    return std::any_of(kinds.begin(), kinds.end(), [&](const auto& kind) { return kind.extension == extension; });
}

} // namespace

JAIssueObject::Attachments documentsAmong(const JAIssueObject::Attachments& attachments)
{
    const auto kinds = TLJiraOptions::inUse().documents;
    if (kinds.empty())
        return attachments;
    JAIssueObject::Attachments documents;
    std::copy_if(attachments.begin(), attachments.end(), std::back_inserter(documents),
                 [&](const auto& attachment) { return attachment->name() && isOfAKind(*attachment->name(), kinds); });
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
