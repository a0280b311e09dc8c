#pragma once

#include "client/TransferListener.h"
#include "client/tasks/Task.h"

namespace client {

class DocumentCopy;

/// A document on its way to an issue.
class AttachTask : public Task, public TransferListener
{
public:
    AttachTask(const TLJiraDocument& document, const QString& issueKey, const TLJiraTask::Ended& ended,
               const TLJiraTask::Progress& progress);

    void uploadAnswered(const QString& path, const std::optional<QJsonValue>& answer) override;

protected:
    void start() override;
    void tellHost() override;

private:
    void copyLater();
    void copied(const std::shared_ptr<DocumentCopy>& copy, const std::optional<QString>& problem);
    void send(const QString& path);

    TLJiraDocument m_document;
    TLJiraTask::Ended m_ended;
    TLJiraTask::Progress m_progress;
    QString m_path;
    std::optional<QJsonValue> m_answer;
};

} // namespace client
