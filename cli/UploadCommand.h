#pragma once

#include "cli/CommandTable.h"
#include "cli/ProgressBar.h"

namespace cli {

/// Attaches a file to an issue.
class UploadCommand final : public Command
{
public:
    /// The name that the attachment will have.
    static QString attachmentName(const Arguments& arguments);
    /// Why a name cannot be sent; nothing for one that can.
    static std::optional<QString> problemOfName(const QString& name);

    UploadCommand(const Arguments& arguments, const Environment& environment);

    void start(const Completion& completion) override;
    bool cancel() override;

private:
    void end(const std::optional<tljira::Error>& error, const Completion& completion);

    const std::shared_ptr<JAController> m_client;
    const QString m_key;
    const QString m_path;
    const QString m_name;
    const bool m_showsProgress;
    /// There while the transfer is.
    std::optional<ProgressBar> m_progress;
};

} // namespace cli
