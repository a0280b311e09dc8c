#pragma once

#include <QString>

#include <optional>

class JAController;

namespace cli {

/// Why the client could not reach, by this address, what its user means by it; nothing when it can. The client uses
/// scheme and host alone: a port that is not the scheme's own would be dropped, and the password sent elsewhere.
std::optional<QString> problemOfServerAddress(const QString& address);

/// Whether a login, in this process or an earlier one, has set a server.
bool hasServer(const JAController& client);

} // namespace cli
