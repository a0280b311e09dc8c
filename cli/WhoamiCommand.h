#pragma once

#include "cli/CommandTable.h"

namespace cli {

/// Shows whose session it is.
class WhoamiCommand final : public Command
{
public:
    WhoamiCommand(const Arguments& arguments, const Environment& environment);

    void start(const Completion& completion) override;

private:
    const std::shared_ptr<JAController> m_client;
    const bool m_wantsJSON;
};

} // namespace cli
