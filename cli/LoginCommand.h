#pragma once

#include "cli/CommandTable.h"
#include "platform/foundation/settings/UserDefaults.h"

namespace cli {

struct InputLine;

/// Opens a session, by a password or a token. Server and session are saved for later runs; a login that fails leaves
/// the saved ones alone.
class LoginCommand final : public Command
{
public:
    LoginCommand(const Arguments& arguments, const Environment& environment);

    ~LoginCommand() override;

    void start(const Completion& completion) override;

private:
    InputLine askForSecret() const;
    QString prompt() const;
    void login(const QString& secret, const Completion& completion);
    Outcome save();

    const std::shared_ptr<JAController> m_client;
    const tljira::console::InterruptSignal& m_interrupts;
    const QString m_server;
    const QString m_user;
    /// Rather than a password. Without a user it is a personal access token.
    const bool m_usesToken;
    const bool m_readsStandardInput;
    /// There until the login is saved; what was not is taken back.
    std::optional<tljira::UserDefaults::Hold> m_changes;
};

} // namespace cli
