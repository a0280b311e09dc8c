#include "records/JAAttachmentObject.h"

#include "platform/foundation/Log.h"
#include "records/CreatedDate.h"
#include "records/JSONReading.h"

std::shared_ptr<const JAAttachmentObject> JAAttachmentObject::initWithDictionary(const QJsonObject& dictionary)
{
    return std::shared_ptr<const JAAttachmentObject>(new JAAttachmentObject(dictionary));
}

JAAttachmentObject::JAAttachmentObject(const QJsonObject& dictionary)
    : JAObject(dictionary)
    , m_downloadLink(records::text(dictionary.value(u"content")))
    , m_name(records::text(dictionary.value(u"filename")))
    , m_time(records::text(dictionary.value(u"created")))
    , m_size(records::integer(dictionary.value(u"size")))
    , m_ID(records::textOrNumber(dictionary.value(u"id")))
    , m_date(m_time ? records::createdDate(*m_time) : std::nullopt)
{
    tljira::log(u"%@", *this);
    tljira::log(u"%@", m_time);
}

QString describe(const JAAttachmentObject& attachment)
{
    return QStringLiteral("<JAAttachmentObject: 0x%1>").arg(reinterpret_cast<quintptr>(&attachment), 0, 16);
}
