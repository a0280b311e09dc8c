#pragma once

#include <QString>

#include <optional>

namespace cli {

/// "session" or "token" where the last login is in the desktop's keyring; nothing where it is in the settings. To be
/// asked when the application has its name.
std::optional<QString> savedInKeyring();

/// Whether this run may speak to the keyring. For the time before there is an application.
bool mayAskKeyring(int argc, const char* const* argv);

} // namespace cli
