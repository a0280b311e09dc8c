#include "records/JAAttachmentObject.h"

#include "platform/foundation/Log.h"
#include "platform/foundation/values/DateFormatter.h"
#include "records/JSONReading.h"

namespace {

/// Kept for all attachments: an issue may have thousands, and making a formatter costs more than reading one of them.
const tljira::DateFormatter& createdFormatter()
{
    thread_local const auto formatter =
        tljira::DateFormatter::withPattern(QStringLiteral("yyyy-MM-dd'T'HH:mm:s.SSSZZZ"));
    return formatter;
}

} // namespace

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
    , m_date(m_time ? createdFormatter().dateFromString(*m_time) : std::nullopt)
{
    tljira::log(u"%@", *this);
    tljira::log(u"%@", m_time);
}

QString describe(const JAAttachmentObject& attachment)
{
    return QStringLiteral("<JAAttachmentObject: 0x%1>").arg(reinterpret_cast<quintptr>(&attachment), 0, 16);
}
