#include "client/tasks/SignInTask.h"

#include "client/CallIfSet.h"
#include "client/TokenSignIn.h"
#include "constants/JAConstants.h"
#include "records/SavedLogin.h"
#include "records/TLJiraOptions.h"

#include <utility>

namespace client {

namespace {

bool isByToken()
{
    return TLJiraOptions::inUse().signIn == TLJiraOptions::SignIn::Token;
}

/// While it lives, requests that are made carry no session of another server than this one.
class OwnSessionOnly
{
public:
    explicit OwnSessionOnly(const QString& server)
        : m_hold(records::savedLogin())
    {
        const auto saved = records::savedLogin().objectForKey(kJiraURL);
        if (!saved || !records::isSameServer(*saved, server))
            JALoginObject::resetSession();
    }
    ~OwnSessionOnly() { m_hold.takeBack(); }
    OwnSessionOnly(const OwnSessionOnly&) = delete;
    OwnSessionOnly& operator=(const OwnSessionOnly&) = delete;

private:
    tljira::UserDefaults::Hold m_hold;
};

} // namespace

SignInTask::SignInTask(const Login& login, const TLJiraTask::Ended& ended)
    : m_login{login.server.trimmed(), login.user, login.password}
    , m_ended(ended)
{
}

void SignInTask::start()
{
    client().setJiraHost(m_login.server);
    const OwnSessionOnly ownSessionOnly(m_login.server);
    client().login(m_login.user, m_login.password, [weak = weakFrom(this)](const auto& session, const auto& error) {
        const auto self = weak.lock();
        if (!self || self->isOver())
            return;
        if (!session)
            self->fail(error.value_or(tljira::makeURLError(tljira::URLError::CannotParseResponse)));
        else if (!isByToken() && (!session->sessionName() || !session->sessionValue()))
            // Any answer of status 200 is accepted, a page for people to log in included.
            self->failWith(QStringLiteral("The server’s answer opens no session."));
        else
            self->accept(*session);
    });
}

void SignInTask::accept(const JALoginObject& session)
{
    const auto& shared = JAController::sharedInstance();
    {
        // Before the address was that of this server, a look at the disk may have brought the other server's back.
        const tljira::UserDefaults::Hold inOnePiece(records::savedLogin());
        shared->setHost(m_login.server);
        if (isByToken())
            records::saveToken(offeredToken(m_login.user, m_login.password, client().url(kCurrentUserPath)));
        else
            session.saveSession();
    }
    // The first window of a user's first run logs out, for the sake of sessions that are older than that run.
    records::savedLogin().setObject(true, kClearCache);
    // A window that is open shows at once who has signed in.
    if (shared->delegate())
        shared->updateSession({});
    succeed();
}

void SignInTask::tellHost()
{
    m_login.password.clear();
    callIfSet(std::exchange(m_ended, nullptr), result());
}

} // namespace client
