#pragma once

#include "client/tasks/Task.h"

namespace client {

/// The question who is signed in.
class UserTask : public Task
{
public:
    explicit UserTask(const TLJiraTask::UserEnded& ended)
        : m_ended(ended)
    {
    }

protected:
    void start() override;
    void tellHost() override;

private:
    void askForUser();

    TLJiraTask::UserEnded m_ended;
    std::shared_ptr<const JAUser> m_user;
};

} // namespace client
