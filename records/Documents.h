#pragma once

#include "platform/foundation/Export.h"
#include "records/JAIssueObject.h"

// Which attachments of an issue are documents of the host, and in which order a user gets to see them.

/// Those whose name has exactly the extension of one of the host's kinds (TLJiraOptions::documents), in the same order.
TL_EXPORT JAIssueObject::Attachments documentsAmong(const JAIssueObject::Attachments& attachments);

/// The same, newest first: those without a date come last, those of one date stay in the server's order.
TL_EXPORT JAIssueObject::Attachments documentsNewestFirst(const JAIssueObject::Attachments& attachments);

/// An attachment without a date is older than any other.
TL_EXPORT bool isNewer(const JAAttachmentObject& one, const JAAttachmentObject& other);
