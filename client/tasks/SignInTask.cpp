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
    client().login(m_login.user, m_login.password,
                   [weak = weakFrom(this), login = m_login](const auto& session, const auto& error) {
                       const auto self = weak.lock();
                       if (self && !self->isOver())
                           self->answered(session, error);
                       else if (session && opensDoor(*session))
                           // It was cancelled when the server had accepted, and half of the login is saved by now.
                           save(login, *session);
                   });
}

bool SignInTask::opensDoor(const JALoginObject& session)
{
    return isByToken() || (session.sessionName() && session.sessionValue());
}

void SignInTask::answered(const std::shared_ptr<const JALoginObject>& session,
                          const std::optional<tljira::Error>& error)
{
    if (!session) {
        fail(error.value_or(tljira::makeURLError(tljira::URLError::CannotParseResponse)));
    } else if (!opensDoor(*session)) {
        // Any answer of status 200 is accepted, a page for people to log in included.
        failWith(QStringLiteral("The server’s answer opens no session."));
    } else {
        save(m_login, *session);
        succeed();
    }
}

void SignInTask::save(const Login& login, const JALoginObject& session)
{
    const auto& shared = JAController::sharedInstance();
    {
        // Before the address was that of this server, a look at the disk may have brought the other server's back.
        const tljira::UserDefaults::Hold inOnePiece(records::savedLogin());
        shared->setHost(login.server);
        if (isByToken())
            records::saveToken(offeredToken(login.user, login.password, shared->url(kCurrentUserPath)));
        else
            session.saveSession();
    }
    // The first window of a user's first run logs out, for the sake of sessions that are older than that run.
    records::savedLogin().setObject(true, kClearCache);
    // A window that is open shows at once who has signed in.
    if (shared->delegate())
        shared->updateSession({});
}

void SignInTask::tellHost()
{
    m_login.password.clear();
    callIfSet(std::exchange(m_ended, nullptr), result());
}

} // namespace client
