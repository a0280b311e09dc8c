#pragma once

#include "client/TransferListener.h"
#include "client/tasks/IssueTask.h"

namespace client {

/// An attachment on its way to the private temporary folder.
class FetchTask : public IssueTask, public TransferListener
{
public:
    FetchTask(const QString& issueKey, const QString& attachmentId, const TLJiraTask::Ended& ended,
              const TLJiraTask::Progress& progress);

    void downloadArrived(const tljira::URLSessionTask& task, const QString& path) override;
    void taskEnded(const tljira::URLSessionTask& task, const std::optional<tljira::Error>& error) override;

protected:
    void issueArrived(const JAIssueObject& issue) override;
    void tellHost() override;

private:
    void download();
    void advance(qint64 bytes);
    void take();

    const QString m_attachmentId;
    TLJiraTask::Ended m_ended;
    TLJiraTask::Progress m_progress;
    std::shared_ptr<const JAAttachmentObject> m_attachment;
    QString m_place;
};

} // namespace client
