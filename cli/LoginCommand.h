#pragma once

#include "cli/CommandTable.h"

namespace cli {

struct InputLine;

/// Opens a session. Server and session are saved for later runs; a login that fails leaves the saved ones alone.
class LoginCommand final : public Command
{
public:
    LoginCommand(const Arguments& arguments, const Environment& environment);

    void start(const Completion& completion) override;

private:
    InputLine askForPassword() const;
    void login(const QString& password, const Completion& completion);

    const std::shared_ptr<JAController> m_client;
    const tljira::console::InterruptSignal& m_interrupts;
    const QString m_server;
    const QString m_user;
    const bool m_readsStandardInput;
};

} // namespace cli
