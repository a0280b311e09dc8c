#pragma once

#include "cli/CommandTable.h"

namespace cli {

/// Lists what is attached to an issue.
class AttachmentsCommand final : public Command
{
public:
    AttachmentsCommand(const Arguments& arguments, const Environment& environment);

    void start(const Completion& completion) override;

private:
    Outcome list(const JAIssueObject& issue) const;

    const std::shared_ptr<JAController> m_client;
    const QString m_key;
    const bool m_wantsAll;
    const bool m_wantsJSON;
};

} // namespace cli
