#include "records/JALoginObject.h"

#include "constants/JAConstants.h"
#include "platform/foundation/values/Format.h"
#include "records/JSONReading.h"
#include "records/SavedLogin.h"
#include "records/SavedToken.h"

using records::savedNameKey;
using records::savedValueKey;

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
    // One that the keyring is to keep counts from when it has it.
    if (!records::usesKeyring())
        saveSession();
}

void JALoginObject::saveSession() const
{
    if (!m_sessionValue || !m_sessionName)
        return;
    tljira::UserDefaults& defaults = records::savedLogin();
    const tljira::UserDefaults::Hold inOnePiece(defaults);
    defaults.setObject(*m_sessionValue, savedValueKey);
    defaults.setObject(*m_sessionName, savedNameKey);
    records::forgetToken();
    records::forgetKeyring();
}

std::optional<QString> JALoginObject::restoreSession()
{
    // Of one moment: another thread may save another session in between.
    const QJsonObject saved = records::savedLogin().dictionaryRepresentation();
    const std::optional<QString> value = records::textOrNumber(saved.value(savedValueKey));
    const std::optional<QString> name = records::textOrNumber(saved.value(savedNameKey));
    if (!value || !name)
        return std::nullopt;
    return tljira::format(QStringLiteral("%@=%@"), name, value);
}

void JALoginObject::resetSession()
{
    tljira::UserDefaults& defaults = records::savedLogin();
    const tljira::UserDefaults::Hold inOnePiece(defaults);
    defaults.removeObjectForKey(savedValueKey);
    defaults.removeObjectForKey(savedNameKey);
}
