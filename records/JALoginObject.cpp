#include "records/JALoginObject.h"

#include "constants/JAConstants.h"
#include "platform/foundation/Format.h"
#include "platform/foundation/UserDefaults.h"
#include "records/JSONReading.h"

namespace {

// Keys in the user defaults; not the JSON keys whose constants bear these words as names.
const auto savedValueKey = QStringLiteral("kSessionValue");
const auto savedNameKey = QStringLiteral("kSessionName");

} // namespace

std::shared_ptr<const JALoginObject> JALoginObject::initWithDictionary(const QJsonObject& dictionary)
{
    return std::shared_ptr<const JALoginObject>(new JALoginObject(dictionary));
}

JALoginObject::JALoginObject(const QJsonObject& dictionary)
    : JAObject(dictionary)
{
    const QJsonObject loginInfo = dictionary.value(kLoginInfo).toObject();
    m_failedLoginCount = records::integer(loginInfo.value(kFailedLoginCount));
    m_loginCount = records::integer(loginInfo.value(kLoginCount));
    m_lastFailedLoginTime = records::text(loginInfo.value(kLastFailedLoginTime));
    m_previousLoginTime = records::text(loginInfo.value(kPreviousLoginTime));

    const QJsonObject session = dictionary.value(kSession).toObject();
    m_sessionName = records::textOrNumber(session.value(kSessionName));
    m_sessionValue = records::textOrNumber(session.value(kSessionValue));
    saveSession();
}

void JALoginObject::saveSession() const
{
    if (!m_sessionValue || !m_sessionName)
        return;
    tljira::UserDefaults& defaults = tljira::UserDefaults::standardUserDefaults();
    defaults.setObject(*m_sessionValue, savedValueKey);
    defaults.setObject(*m_sessionName, savedNameKey);
}

std::optional<QString> JALoginObject::restoreSession()
{
    const tljira::UserDefaults& defaults = tljira::UserDefaults::standardUserDefaults();
    const std::optional<QString> value = defaults.stringForKey(savedValueKey);
    const std::optional<QString> name = defaults.stringForKey(savedNameKey);
    if (!value || !name)
        return std::nullopt;
    return tljira::format(QStringLiteral("%@=%@"), name, value);
}

void JALoginObject::resetSession()
{
    tljira::UserDefaults& defaults = tljira::UserDefaults::standardUserDefaults();
    defaults.removeObjectForKey(savedValueKey);
    defaults.removeObjectForKey(savedNameKey);
}
