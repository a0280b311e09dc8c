#pragma once

#include "platform/foundation/Export.h"
#include "records/JAAttachmentObject.h"

#include <QJsonObject>

#include <memory>
#include <vector>

/// An issue, as far as its attachments go.
class TL_EXPORT JAIssueObject : public JAObject
{
public:
    /// Shared with whoever shows them; no entry is null.
    using Attachments = std::vector<std::shared_ptr<const JAAttachmentObject>>;

    /// Reads the answer to a request for an issue.
    static std::shared_ptr<const JAIssueObject> initWithDictionary(const QJsonObject& dictionary);

    /// In the server's order; empty when the answer has none. Elements of the answer that are no objects are left out,
    /// so that no entry is null.
    const Attachments& attachments() const { return m_attachments; }

private:
    explicit JAIssueObject(const QJsonObject& dictionary);

    Attachments m_attachments;
};
