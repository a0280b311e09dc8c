#pragma once

#include "cli/CommandTable.h"
#include "records/SavedToken.h"

namespace cli {

/// Tells whether the saved session is still good.
class SessionCommand final : public Command
{
public:
    SessionCommand(const Arguments& arguments, const Environment& environment);

    void start(const Completion& completion) override;

private:
    Outcome validToken(const records::SavedToken& token) const;
    Outcome validSession(const JALoginObject& session) const;

    const std::shared_ptr<JAController> m_client;
    const bool m_wantsJSON;
};

} // namespace cli
