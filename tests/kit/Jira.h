#pragma once

#include "standin/Server.h"

#include <QString>

namespace tests {

/// The server that a test talks to. Anna has an account there, and the issue ABC-1 is there and empty. Everybody in this
/// process reaches it as `address`, and as another host under `otherAddress`.
class Jira : public standin::Server
{
public:
    explicit Jira(const standin::Options& options = {});

    static const QString address;
    static const QString otherAddress;
    /// Nothing listens there.
    static const QString deadAddress;

    static constexpr char user[] = "anna";
    static constexpr char password[] = "secret";
    static constexpr char issue[] = "ABC-1";

    /// For processes that have no server of their own: `address` and the two others lead to this port of the machine.
    static void routeTo(int port);
};

} // namespace tests
