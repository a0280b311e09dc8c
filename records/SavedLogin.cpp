#include "records/SavedLogin.h"

#include "constants/JAConstants.h"
#include "platform/foundation/values/URL.h"

namespace records {

namespace {

QString serverOf(const QJsonValue& address)
{
    const auto url = tljira::URL::parse(address.toString());
    const bool isComplete = url && url->scheme && url->host;
    return isComplete ? (*url->scheme + QStringLiteral("://") + *url->host).toLower() : QString();
}

} // namespace

tljira::UserDefaults& savedLogin()
{
    static tljira::UserDefaults& defaults = []() -> tljira::UserDefaults& {
        auto& standard = tljira::UserDefaults::standardUserDefaults();
        standard.keepTogether(kJiraURL, {savedValueKey, savedNameKey}, isSameServer);
        return standard;
    }();
    return defaults;
}

bool isSameServer(const QJsonValue& one, const QJsonValue& other)
{
    return one == other || (!serverOf(one).isEmpty() && serverOf(one) == serverOf(other));
}

} // namespace records
