#include "records/SavedLogin.h"

#include "constants/JAConstants.h"
#include "platform/foundation/values/URL.h"
#include "records/ServerAddress.h"
#include "records/TLJiraOptions.h"

#include <atomic>

namespace records {

namespace {

QString serverOf(const QJsonValue& address)
{
    const auto url = tljira::URL::parse(address.toString());
    if (!url || !url->scheme || !url->host)
        return {};
    if (TLJiraOptions::inUse().address == TLJiraOptions::Address::SchemeAndHost)
        return (*url->scheme + QStringLiteral("://") + *url->host).toLower();
    // Upper and lower case differ in paths alone, and a port that is typed may be the one that is meant without.
    const QString base = baseOf(address.toString());
    const auto origin = originOf(base);
    return origin ? *origin + base.mid(base.indexOf(u'/', base.indexOf(u"//") + 2)) : base;
}

} // namespace

tljira::UserDefaults& savedLogin()
{
    static tljira::UserDefaults& defaults = []() -> tljira::UserDefaults& {
        auto& standard = tljira::UserDefaults::standardUserDefaults();
        standard.keepTogether(kJiraURL, secretKeys() + QStringList(savedInKeyringKey), isSameServer);
        return standard;
    }();
    static std::atomic<bool> isInMemory = false;
    const bool usesMemory = usesKeyring();
    if (isInMemory.exchange(usesMemory) != usesMemory)
        defaults.keepInMemory(usesMemory ? secretKeys() : QStringList());
    return defaults;
}

bool usesKeyring()
{
    return TLJiraOptions::inUse().secrets == TLJiraOptions::Secrets::Keyring;
}

QStringList secretKeys()
{
    return {savedValueKey, savedNameKey, savedTokenKey};
}

bool isSameServer(const QJsonValue& one, const QJsonValue& other)
{
    return one == other || (!serverOf(one).isEmpty() && serverOf(one) == serverOf(other));
}

} // namespace records
