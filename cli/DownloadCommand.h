#pragma once

#include "cli/CommandTable.h"
#include "cli/DownloadPlace.h"
#include "cli/ProgressBar.h"

namespace cli {

/// Fetches one attachment of an issue and prints where it lies now.
class DownloadCommand final : public Command
{
public:
    DownloadCommand(const Arguments& arguments, const Environment& environment);

    void start(const Completion& completion) override;
    bool cancel() override;

private:
    void choose(const JAIssueObject& issue);
    void fetch();
    void follow(qint64 bytesSoFar, const std::optional<tljira::Error>& error, bool isFinished);
    std::optional<Outcome> problemOfReceived() const;
    void examine();
    Outcome tooMuch() const;

    const std::shared_ptr<JAController> m_client;
    const QString m_key;
    const QString m_nameOrID;
    const std::optional<QString> m_to;
    const bool m_showsProgress;
    Completion m_completion;
    std::shared_ptr<const JAAttachmentObject> m_attachment;
    QString m_destination;
    std::optional<DownloadPlace> m_place;
    std::optional<ProgressBar> m_progress;
    /// The transport has a task, and a file for it.
    bool m_isUnderWay = false;
    /// More than the issue tells of the attachment; the transfer was cancelled then.
    bool m_hasTooMuch = false;
};

} // namespace cli
