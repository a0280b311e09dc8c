#pragma once

#include "client/tasks/Task.h"

namespace client {

/// A session on a server, for the whole program.
class SignInTask : public Task
{
public:
    struct Login
    {
        QString server;
        QString user;
        QString password;
    };

    SignInTask(const Login& login, const TLJiraTask::Ended& ended);

protected:
    void start() override;
    void tellHost() override;

private:
    static bool opensDoor(const JALoginObject& session);
    static void save(const Login& login, const JALoginObject& session);
    void answered(const std::shared_ptr<const JALoginObject>& session, const std::optional<tljira::Error>& error);

    Login m_login;
    TLJiraTask::Ended m_ended;
};

} // namespace client
