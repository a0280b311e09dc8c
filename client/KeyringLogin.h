#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"
#include "records/KeyringEntry.h"

#include <functional>
#include <memory>
#include <optional>

namespace tljira {
class HTTPCookieStorage;
}

/// Session and token where the host chose the desktop's keyring (TLJiraOptions::Secrets::Keyring): requests carry those
/// in memory, which come from the keyring and go there. The settings say that there are some, so that nobody is asked
/// to unlock a keyring in vain. Callbacks come once, in a later turn of the event loop. Main thread only.
namespace client {

using KeyringDone = std::function<void(const std::optional<tljira::Error>& error)>;

/// Whether the keyring has a login for the server that is set.
bool isLoginInKeyring();
/// And nobody has looked there yet.
TL_EXPORT bool isLoginUnread();

/// Brings the login into memory. That of another server than the present one is none. An error leaves what is there.
TL_EXPORT void readLogin(const KeyringDone& done);

/// Brings a login of the server `address` into the keyring, then into memory. An error leaves both as they were.
void keepLogin(const QJsonObject& secrets, const std::optional<QString>& address, const KeyringDone& done);

/// How many logins the keyring was to take so far. Whoever wants to remove one sees whether there is another by now.
unsigned loginCount();

/// Removes the login from the keyring. What is in memory stays.
void removeLogin(const KeyringDone& done);

/// Puts an earlier entry, or nothing, in the place of the login that this process kept last. Where another process has
/// kept one meanwhile, that stays.
TL_EXPORT void takeBackLogin(const std::optional<records::KeyringEntry>& former, const KeyringDone& done);

/// What the keyring is to hold instead, whatever it holds: for a login that goes to the settings. Nothing removes it.
TL_EXPORT void setKeyringEntry(const std::optional<records::KeyringEntry>& entry, const KeyringDone& done);

/// The cookies of all requests: of the process alone where no file is to have a secret.
const std::shared_ptr<tljira::HTTPCookieStorage>& cookieStorage();

} // namespace client
