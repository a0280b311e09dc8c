#include "client/CallIfSet.h"
#include "client/JAControllerState.h"
#include "client/SessionRequest.h"
#include "client/TokenSignIn.h"
#include "constants/JAConstants.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "records/KeyringEntry.h"
#include "records/SavedLogin.h"

using client::Answer;
using client::callIfSet;

void JAController::loginWithToken(const std::optional<QString>& user, const std::optional<QString>& token,
                                  const LoginCallBack& callBack)
{
    const auto address = url(kCurrentUserPath);
    const records::SavedToken offered = client::offeredToken(user, token, address);
    if (const auto problem = client::problemOfToken(offered)) {
        refuseSessionLater(*problem, callBack);
        return;
    }
    const auto ended = [this, offered, callBack, typed = m_state->jiraHost.get()](const auto& body, const auto& error,
                                                                                  const auto& response) {
        const Answer answer = Answer::from(body, error, response);
        if (answer.kind == Answer::Kind::Missing) {
            callIfSet(callBack, nullptr, answer.error);
            return;
        }
        tljira::log(u"Sign-in by token: %lld", client::statusOf(response));
        if (!client::namesAccount(offered, answer, response)) {
            refuseSession(client::refusedToken(offered, answer, response), callBack);
            return;
        }
        if (records::usesKeyring()) {
            keepInKeyring(JALoginObject::initWithDictionary({}), records::secretsOf(offered), typed, callBack);
            return;
        }
        {
            auto& saved = records::savedLogin();
            const tljira::UserDefaults::Hold inOnePiece(saved);
            records::saveToken(offered);
            saved.setPlaceOfMembers(typed ? QJsonValue(*typed) : QJsonValue(QJsonValue::Undefined));
        }
        beginSession(JALoginObject::initWithDictionary({}), callBack);
    };
    session()->dataTaskWithRequest(client::tokenRequest(offered, address), callingBackLater(ended))->resume();
}

void JAController::checkToken(const LoginCallBack& callBack)
{
    const auto address = url(kCurrentUserPath);
    const auto saved = records::savedToken();
    if (!saved || !client::authorizationFor(address)) {
        refuseSessionLater(client::noToken(), callBack);
        return;
    }
    sendGetRequest(address, [this, saved, callBack](const auto& body, const auto& error, const auto& response) {
        const Answer answer = Answer::from(body, error, response);
        if (answer.kind == Answer::Kind::Missing) {
            notifyInvalidSession();
            callIfSet(callBack, nullptr, answer.error);
        } else if (client::namesAccount(*saved, answer, response)) {
            beginSession(JALoginObject::initWithDictionary({}), callBack);
        } else {
            refuseSession(client::refusedToken(*saved, answer, response), callBack);
        }
    });
}

/// The server knows of no session, so there is nothing to tell it.
void JAController::forgetToken(const CompletionCallBack& callBack)
{
    tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->deleteAllCookies();
    forgetLogin();
    tljira::MainQueue::instance().addOperation([self = shared_from_this(), callBack] {
        self->notifyInvalidSession();
        callIfSet(callBack, std::nullopt);
    });
}

void JAController::refuseSessionLater(const tljira::Error& error, const LoginCallBack& callBack)
{
    tljira::MainQueue::instance().addOperation(
        [self = shared_from_this(), error, callBack] { self->refuseSession(error, callBack); });
}
