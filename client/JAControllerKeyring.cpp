#include "client/Answer.h"
#include "client/CallIfSet.h"
#include "client/JAController.h"
#include "client/KeyringLogin.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "records/KeyringEntry.h"
#include "records/SavedLogin.h"

// What is different where the host chose the desktop's keyring for session and token.

using client::callIfSet;

namespace {

/// Calls back when server and keyring have both answered. What the keyring says counts more: there a secret may lie on.
class LogoutEnd
{
public:
    LogoutEnd(int answers, const JAController::CompletionCallBack& callBack)
        : m_left(answers)
        , m_callBack(callBack)
    {
    }

    void serverAnswered(const std::optional<tljira::Error>& error)
    {
        m_ofServer = error;
        answered();
    }

    void keyringAnswered(const std::optional<tljira::Error>& error)
    {
        m_ofKeyring = error;
        answered();
    }

private:
    void answered()
    {
        if (--m_left == 0)
            callIfSet(m_callBack, m_ofKeyring ? m_ofKeyring : m_ofServer);
    }

    int m_left;
    const JAController::CompletionCallBack m_callBack;
    std::optional<tljira::Error> m_ofServer;
    std::optional<tljira::Error> m_ofKeyring;
};

} // namespace

/// Another process may have logged in or out since this one last looked, so it looks again.
void JAController::lookIntoKeyring(const LoginCallBack& callBack, const std::function<void()>& proceed)
{
    if (!client::isLoginInKeyring()) {
        proceed();
        return;
    }
    client::readLogin([self = shared_from_this(), callBack, proceed](const auto& error) {
        if (error)
            self->refuseSession(error, callBack);
        else
            proceed();
    });
}

/// `secrets` are empty where the server's answer opened no session.
void JAController::keepInKeyring(const std::shared_ptr<const JALoginObject>& newSession, const QJsonObject& secrets,
                                 const std::optional<QString>& address, const LoginCallBack& callBack)
{
    if (secrets.isEmpty()) {
        beginSession(newSession, callBack);
        return;
    }
    client::keepLogin(secrets, address, [self = shared_from_this(), newSession, callBack](const auto& error) {
        if (!error) {
            self->beginSession(newSession, callBack);
            return;
        }
        // Those of a session that nobody has.
        client::cookieStorage()->deleteAllCookies();
        self->refuseSession(error, callBack);
    });
}

/// `sessionURL` is absent where there is only a token.
void JAController::logoutWithKeyring(const std::optional<QString>& sessionURL, const CompletionCallBack& callBack)
{
    const auto forget = [self = shared_from_this(), sessionURL, callBack, before = client::loginCount()](const auto&) {
        if (before == client::loginCount())
            self->forgetKeptLogin(sessionURL, callBack);
        else
            // While the keyring asked its user another login has taken the place of this one.
            callIfSet(callBack, std::nullopt);
    };
    if (client::isLoginUnread())
        client::readLogin(forget);
    else
        forget(std::optional<tljira::Error>());
    setHost(std::nullopt);
}

void JAController::forgetKeptLogin(const std::optional<QString>& sessionURL, const CompletionCallBack& callBack)
{
    const auto end = std::make_shared<LogoutEnd>(2, callBack);
    client::cookieStorage()->deleteAllCookies();
    tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->deleteAllCookies();
    const auto answered = [self = shared_from_this(), end](const std::optional<tljira::Error>& error) {
        self->notifyInvalidSession();
        end->serverAnswered(error);
    };
    if (sessionURL) {
        sendDeleteRequest(sessionURL, [answered](const auto&, const auto& error, const auto& response) {
            const qint64 status = client::statusOf(response);
            answered(error || status == 204 ? error : client::unexpectedStatus(status, std::nullopt));
        });
    } else {
        tljira::MainQueue::instance().addOperation([answered] { answered(std::nullopt); });
    }
    // The request has them.
    records::setSecretsInMemory({});
    client::removeLogin([end](const auto& error) { end->keyringAnswered(error); });
}
