#pragma once

#include "cli/CommandTable.h"

namespace cli {

/// Ends the session and forgets the server.
class LogoutCommand final : public Command
{
public:
    LogoutCommand(const Arguments& arguments, const Environment& environment);

    void start(const Completion& completion) override;

private:
    const std::shared_ptr<JAController> m_client;
};

} // namespace cli
