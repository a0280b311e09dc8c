#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/settings/UserDefaults.h"

/// The server's address and the session, or the token, of a login, which the user defaults keep together: see
/// tljira::UserDefaults::keepTogether. Every reader and writer of them comes here for the defaults. Where the host
/// chose TLJiraOptions::Secrets::Keyring, session and token are there in memory alone; see KeyringEntry.
namespace records {

TL_EXPORT tljira::UserDefaults& savedLogin();

/// Whether the host chose the desktop's keyring.
TL_EXPORT bool usesKeyring();
/// The keys of session and token.
QStringList secretKeys();

/// Whether two addresses, as they are saved, are of one server: what counts of them (TLJiraOptions::Address) is the
/// same.
TL_EXPORT bool isSameServer(const QJsonValue& one, const QJsonValue& other);

// Keys in the user defaults; not the JSON keys whose constants bear these words as names.
inline constexpr QLatin1String savedValueKey("kSessionValue");
inline constexpr QLatin1String savedNameKey("kSessionName");
/// One value, an object; see SavedToken.
inline constexpr QLatin1String savedTokenKey("signInToken");
/// In the place of these, where the desktop's keyring has them: "session" or "token".
inline constexpr QLatin1String savedInKeyringKey("signInKeyring");

} // namespace records
