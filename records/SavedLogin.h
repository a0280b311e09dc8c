#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/settings/UserDefaults.h"

/// The server's address and the session, or the token, of a login, which the user defaults keep together: see
/// tljira::UserDefaults::keepTogether. Every reader and writer of them comes here for the defaults.
namespace records {

TL_EXPORT tljira::UserDefaults& savedLogin();

/// Whether two addresses, as they are saved, are of one server: what counts of them (TLJiraOptions::Address) is the
/// same.
TL_EXPORT bool isSameServer(const QJsonValue& one, const QJsonValue& other);

// Keys in the user defaults; not the JSON keys whose constants bear these words as names.
inline constexpr QLatin1String savedValueKey("kSessionValue");
inline constexpr QLatin1String savedNameKey("kSessionName");
/// One value, an object; see SavedToken.
inline constexpr QLatin1String savedTokenKey("signInToken");

} // namespace records
