#pragma once

#include "standin/Server.h"

#include <QString>

namespace tests {

/// The server that a test talks to. Anna has an account there, and the issue ABC-1 is there and empty. Everybody in
/// this process reaches it as `address`, and as another host under `otherAddress`.
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
    /// Her e-mail address and the two kinds of tokens that she has.
    static constexpr char email[] = "anna@example.test";
    static constexpr char apiToken[] = "ATATT3xFfGF0-api_token=9F1B";
    static constexpr char accessToken[] = "NjU1MzE1MDcyMDk5OgJ6Qo5aWPtSgr+x/Zk4";
    static constexpr char issue[] = "ABC-1";

    /// For processes that have no server of their own: `address` and the two others lead to this port of the machine.
    static void routeTo(int port);
};

} // namespace tests
