#include "client/tasks/TLJiraTask.h"

#include "client/tasks/AttachTask.h"
#include "client/tasks/FetchTask.h"
#include "client/tasks/ListTask.h"
#include "client/tasks/SignInTask.h"
#include "client/tasks/UserTask.h"

struct TLJiraTask::Parts
{
    template <class Kind, typename... Arguments>
    static std::shared_ptr<TLJiraTask> begin(const Arguments&... arguments)
    {
        const auto task = std::make_shared<Kind>(arguments...);
        std::shared_ptr<TLJiraTask> object(new TLJiraTask(std::unique_ptr<Parts>(new Parts{task})));
        task->begin();
        return object;
    }

    const std::shared_ptr<client::Task> task;
};

TLJiraTask::TLJiraTask(std::unique_ptr<Parts> parts)
    : m_parts(std::move(parts))
{
}

TLJiraTask::~TLJiraTask() = default;

std::shared_ptr<TLJiraTask> TLJiraTask::signIn(const QString& server, const QString& user, const QString& password,
                                               const Ended& ended)
{
    return Parts::begin<client::SignInTask>(client::SignInTask::Login{server, user, password}, ended);
}

std::shared_ptr<TLJiraTask> TLJiraTask::askWhoIsSignedIn(const UserEnded& ended)
{
    return Parts::begin<client::UserTask>(ended);
}

std::shared_ptr<TLJiraTask> TLJiraTask::attach(const Document& document, const QString& issueKey, const Ended& ended,
                                               const Progress& progress)
{
    return Parts::begin<client::AttachTask>(document, issueKey, ended, progress);
}

std::shared_ptr<TLJiraTask> TLJiraTask::list(const QString& issueKey, const ListEnded& ended)
{
    return Parts::begin<client::ListTask>(issueKey, ended);
}

std::shared_ptr<TLJiraTask> TLJiraTask::fetch(const QString& issueKey, const QString& attachmentId, const Ended& ended,
                                              const Progress& progress)
{
    return Parts::begin<client::FetchTask>(issueKey, attachmentId, ended, progress);
}

void TLJiraTask::cancel()
{
    m_parts->task->cancel();
}

bool TLJiraTask::isOver() const
{
    return m_parts->task->isOver();
}
