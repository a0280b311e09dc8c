#include "records/JAIssueObject.h"

#include <QJsonArray>

std::shared_ptr<const JAIssueObject> JAIssueObject::initWithDictionary(const QJsonObject& dictionary)
{
    return std::shared_ptr<const JAIssueObject>(new JAIssueObject(dictionary));
}

JAIssueObject::JAIssueObject(const QJsonObject& dictionary)
    : JAObject(dictionary)
{
    const QJsonArray elements = dictionary.value(u"fields").toObject().value(u"attachment").toArray();
    m_attachments.reserve(static_cast<std::size_t>(elements.size()));
    for (const QJsonValue element : elements) {
        if (element.isObject())
            m_attachments.push_back(JAAttachmentObject::initWithDictionary(element.toObject()));
    }
}
