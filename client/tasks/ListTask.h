#pragma once

#include "client/tasks/IssueTask.h"

namespace client {

/// The documents of an issue.
class ListTask : public IssueTask
{
public:
    ListTask(const QString& issueKey, const TLJiraTask::ListEnded& ended)
        : IssueTask(issueKey)
        , m_ended(ended)
    {
    }

protected:
    void issueArrived(const JAIssueObject& issue) override;
    void tellHost() override;

private:
    TLJiraTask::ListEnded m_ended;
    JAIssueObject::Attachments m_documents;
};

} // namespace client
