#pragma once

#include <QString>

#include <optional>

class JAController;

namespace cli {

/// Why the client could not reach a server by this address; nothing when it can.
std::optional<QString> problemOfServerAddress(const QString& address);

/// What users call the server at an address: "jira.example.com:8443/jira". The address as it is, if it is none.
QString serverName(const QString& address);

/// Whether a login, in this process or an earlier one, has set a server.
bool hasServer(const JAController& client);

} // namespace cli
