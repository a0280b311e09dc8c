#include "client/tasks/UserTask.h"

#include "client/CallIfSet.h"

#include <utility>

namespace client {

void UserTask::start()
{
    whenSignedIn([this] { askForUser(); });
}

void UserTask::askForUser()
{
    client().getCurrentUser([weak = weakFrom(this)](const auto& user, const auto& error) {
        const auto self = weak.lock();
        if (!self || self->isOver())
            return;
        if (!user) {
            self->fail(error.value_or(tljira::makeURLError(tljira::URLError::CannotParseResponse)));
        } else if (!user->name() && !user->key() && !user->displayName()) {
            // Such as a page for people to log in.
            self->failWith(QStringLiteral("The server’s answer names no user."));
        } else {
            self->m_user = user;
            self->succeed();
        }
    });
}

void UserTask::tellHost()
{
    callIfSet(std::exchange(m_ended, nullptr), result(), m_user);
}

} // namespace client
