#pragma once

#include "cli/CommandTable.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "records/KeyringEntry.h"

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
    void openSession(const QString& secret, const Completion& completion);
    void save(const Completion& completion);
    void takeBackFromKeyring(const Outcome& failure, const Completion& completion);
    void removeFromKeyring(const Completion& completion);

    const std::shared_ptr<JAController> m_client;
    const tljira::console::InterruptSignal& m_interrupts;
    const QString m_server;
    const QString m_user;
    /// Rather than a password. Without a user it is a personal access token.
    const bool m_usesToken;
    const bool m_readsStandardInput;
    const bool m_wasInKeyring;
    /// What the keyring has at the beginning.
    std::optional<records::KeyringEntry> m_former;
    /// There until the login is saved; what was not is taken back.
    std::optional<tljira::UserDefaults::Hold> m_changes;
};

} // namespace cli
