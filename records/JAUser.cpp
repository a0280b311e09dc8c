#include "records/JAUser.h"

#include "constants/JAConstants.h"
#include "records/JSONReading.h"

std::shared_ptr<const JAUser> JAUser::initWithDictionary(const QJsonObject& dictionary)
{
    return std::shared_ptr<const JAUser>(new JAUser(dictionary));
}

JAUser::JAUser(const QJsonObject& dictionary)
    : JAObject(dictionary)
    , m_avatarUrl(records::text(dictionary.value(kAvatarUrls).toObject().value(kAvatarUrl48)))
    , m_displayName(records::text(dictionary.value(kDispayName)))
    , m_email(records::text(dictionary.value(kEmailAddress)))
    , m_key(records::text(dictionary.value(kKey)))
    , m_name(records::text(dictionary.value(kName)))
    , m_timeZone(records::text(dictionary.value(kTimeZone)))
{
}
