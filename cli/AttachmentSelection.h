#pragma once

#include "records/JAIssueObject.h"

namespace cli {

/// The documents of the host's type, newest first. Those without a date come last; those of one date stay in the
/// server's order.
JAIssueObject::Attachments documentsNewestFirst(const JAIssueObject::Attachments& attachments);

/// The attachment with this ID, or else the newest of those with this name; null when there is none.
std::shared_ptr<const JAAttachmentObject> findAttachment(const JAIssueObject::Attachments& attachments,
                                                         const QString& nameOrID);

} // namespace cli
