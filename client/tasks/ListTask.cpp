#include "client/tasks/ListTask.h"

#include "client/CallIfSet.h"
#include "records/Documents.h"

#include <utility>

namespace client {

void ListTask::issueArrived(const JAIssueObject& issue)
{
    m_documents = documentsNewestFirst(issue.attachments());
    succeed();
}

void ListTask::tellHost()
{
    callIfSet(std::exchange(m_ended, nullptr), result(), m_documents);
}

} // namespace client
