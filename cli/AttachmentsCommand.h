#pragma once

#include "cli/CommandTable.h"
#include "records/TLJiraOptions.h"

namespace cli {

/// Lists what is attached to an issue.
class AttachmentsCommand final : public Command
{
public:
    /// What --documents has said, as a host's choice; without any, the default kinds.
    static std::vector<TLJiraOptions::DocumentKind> documentKinds(const QStringList& documents);
    /// Nothing where each is an extension that a name can have, or "all".
    static std::optional<QString> problemOfDocuments(const QStringList& documents);

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
