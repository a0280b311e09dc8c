#include "client/Answer.h"
#include "client/CallIfSet.h"
#include "client/JAControllerState.h"
#include "client/KeyringLogin.h"
#include "constants/JAConstants.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/Secrets.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "records/KeyringEntry.h"
#include "records/SavedLogin.h"
#include "records/SavedToken.h"
#include "records/TLJiraOptions.h"

using client::Answer;
using client::callIfSet;

namespace {

/// The texts up to the first that is missing.
QJsonObject credentials(const std::optional<QString>& user, const std::optional<QString>& password)
{
    QJsonObject dictionary;
    if (user)
        dictionary.insert(u"username", *user);
    if (user && password)
        dictionary.insert(u"password", *password);
    return dictionary;
}

/// What is sent is hidden where it is sent; a session that an answer brings is in the log before.
void hideSession(const QJsonObject& answer)
{
    const QJsonValue value = answer.value(kSession).toObject().value(kSessionValue);
    if (value.isString() || value.isDouble())
        tljira::hide(tljira::SecretKind::Login, tljira::describe(value));
}

bool isByToken()
{
    return TLJiraOptions::inUse().signIn == TLJiraOptions::SignIn::Token;
}

/// Whether the keyring has this session already.
bool isKept(const QJsonObject& dictionary)
{
    return client::isLoginInKeyring() &&
           records::secretsOf(*JALoginObject::initWithDictionary(dictionary)) == records::secretsInMemory();
}

} // namespace

void JAController::login(const std::optional<QString>& user, const std::optional<QString>& password,
                         const LoginCallBack& callBack)
{
    if (isByToken()) {
        loginWithToken(user, password, callBack);
        return;
    }
    const QJsonObject parametres = credentials(user, password);
    const auto hidden = tljira::hideWhileHeld(tljira::SecretKind::Login, password.value_or(QString()));
    sendPostRequest(url(kLoginURLPath), parametres, std::nullopt,
                    [this, parametres, callBack, hidden,
                     address = m_state->jiraHost.get()](const auto& body, const auto& error, const auto& response) {
                        const Answer answer = Answer::from(body, error, response);
                        if (answer.kind == Answer::Kind::Missing) {
                            callIfSet(callBack, nullptr, answer.error);
                            return;
                        }
                        hideSession(answer.dictionary());
                        tljira::log(u"%@", parametres);
                        tljira::log(u"%@", response);
                        tljira::log(u"%@", answer.json);
                        if (answer.kind == Answer::Kind::Accepted)
                            acceptSession(answer.dictionary(), address, callBack);
                        else
                            refuseSession(answer.error, callBack);
                    });
}

void JAController::updateSession(const LoginCallBack& callBack)
{
    lookIntoKeyring(callBack, [this, callBack] {
        if (isByToken())
            checkToken(callBack);
        else
            checkSession(callBack);
    });
}

void JAController::checkSession(const LoginCallBack& callBack)
{
    sendGetRequest(url(kLoginURLPath), [this, callBack, address = m_state->jiraHost.get()](
                                           const auto& body, const auto& error, const auto& response) {
        const Answer answer = Answer::from(body, error, response);
        switch (answer.kind) {
        case Answer::Kind::Missing:
            notifyInvalidSession();
            callIfSet(callBack, nullptr, answer.error);
            break;
        case Answer::Kind::Accepted:
            if (isKept(answer.dictionary()))
                beginSession(JALoginObject::initWithDictionary(answer.dictionary()), callBack);
            else
                acceptSession(answer.dictionary(), address, callBack);
            break;
        case Answer::Kind::Refused:
            refuseSession(answer.error, callBack);
            break;
        }
    });
}

void JAController::logout(const CompletionCallBack& callBack)
{
    if (records::usesKeyring()) {
        // What a locked keyring kept at an earlier logout is of no server any more.
        const bool hasSession = !isByToken() && records::savedLogin().objectForKey(kJiraURL);
        logoutWithKeyring(hasSession ? url(kLoginURLPath) : std::nullopt, callBack);
        return;
    }
    if (isByToken()) {
        forgetToken(callBack);
        return;
    }
    const std::optional<QString> sessionURL = url(kLoginURLPath);
    tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->deleteAllCookies();
    records::savedLogin().synchronize();
    sendDeleteRequest(sessionURL, [this, callBack](const auto&, const auto& error, const auto& response) {
        if (error)
            callIfSet(callBack, error);
        notifyInvalidSession();
        const qint64 status = client::statusOf(response);
        if (status == 204)
            callIfSet(callBack, std::nullopt);
        else
            callIfSet(callBack, client::unexpectedStatus(status, std::nullopt));
    });
    forgetLogin();
}

/// The saved pair stays; a token, which no server forgets by itself, does not.
void JAController::forgetLogin()
{
    const tljira::UserDefaults::Hold inOnePiece(records::savedLogin());
    records::forgetToken();
    setHost(std::nullopt);
}

void JAController::getCurrentUser(const UserCallBack& callBack)
{
    sendGetRequest(url(kCurrentUserPath), [callBack](const auto& body, const auto& error, const auto& response) {
        const Answer answer = Answer::from(body, error, response);
        if (answer.kind == Answer::Kind::Accepted)
            callIfSet(callBack, JAUser::initWithDictionary(answer.dictionary()), std::nullopt);
        else
            callIfSet(callBack, nullptr, answer.error);
    });
}

void JAController::getIssueObject(const QString& key, const IssueCallBack& callBack)
{
    sendGetRequest(url(tljira::format(kGetIssue, key)),
                   [callBack](const auto& body, const auto& error, const auto& response) {
                       const Answer answer = Answer::from(body, error, response);
                       if (answer.kind == Answer::Kind::Accepted)
                           callIfSet(callBack, JAIssueObject::initWithDictionary(answer.dictionary()), std::nullopt);
                       else
                           callIfSet(callBack, nullptr, answer.error);
                   });
}

/// `address` is where the request went. By now another one may have been set, to which the session must not be saved.
void JAController::acceptSession(const QJsonObject& dictionary, const std::optional<QString>& address,
                                 const LoginCallBack& callBack)
{
    std::shared_ptr<const JALoginObject> newSession;
    if (records::usesKeyring()) {
        newSession = JALoginObject::initWithDictionary(dictionary);
        keepInKeyring(newSession, records::secretsOf(*newSession), address, callBack);
        return;
    }
    {
        auto& saved = records::savedLogin();
        const tljira::UserDefaults::Hold inOnePiece(saved);
        newSession = JALoginObject::initWithDictionary(dictionary);
        if (newSession->sessionName() && newSession->sessionValue())
            saved.setPlaceOfMembers(address ? QJsonValue(*address) : QJsonValue(QJsonValue::Undefined));
    }
    beginSession(newSession, callBack);
}

void JAController::beginSession(const std::shared_ptr<const JALoginObject>& newSession, const LoginCallBack& callBack)
{
    m_state->jaSession.set(newSession);
    if (const auto receiver = delegate())
        receiver->jaValidSession();
    callIfSet(callBack, newSession, std::nullopt);
}

void JAController::refuseSession(const std::optional<tljira::Error>& error, const LoginCallBack& callBack)
{
    callIfSet(callBack, nullptr, error);
    notifyInvalidSession();
}

void JAController::notifyInvalidSession() const
{
    if (const auto receiver = delegate())
        receiver->jaInvalidSession();
}
