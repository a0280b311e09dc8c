#pragma once

#include "records/JAIssueObject.h"

namespace cli {

/// The attachment with this ID, or else the newest of those with this name; null when there is none.
std::shared_ptr<const JAAttachmentObject> findAttachment(const JAIssueObject::Attachments& attachments,
                                                         const QString& nameOrID);

} // namespace cli
