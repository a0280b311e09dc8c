#include "client/tasks/Task.h"

#include "client/Answer.h"
#include "client/KeyringLogin.h"
#include "client/tasks/TransferResult.h"
#include "constants/JAConstants.h"
#include "records/SavedLogin.h"

#include <utility>

namespace client {

namespace {

constexpr qint64 unauthorized = 401;

QJsonObject savedLogin()
{
    const QJsonObject saved = records::savedLogin().dictionaryRepresentation();
    QJsonObject login;
    for (const QString& key : records::secretKeys() + QStringList(kJiraURL)) {
        if (saved.contains(key))
            login.insert(key, saved.value(key));
    }
    return login;
}

QJsonObject withoutServer(QJsonObject login)
{
    login.remove(kJiraURL);
    return login;
}

tljira::Error noLongerSignedIn()
{
    const QString text = QStringLiteral("The program is no longer signed in to this server.");
    return unexpectedStatus(unauthorized, QJsonObject{{QLatin1String(tljira::Error::localizedDescriptionKey), text}});
}

} // namespace

Task::Task(const QString& issueKey)
    : m_issueKey(issueKey)
    , m_login(savedLogin())
    , m_client(JAController::init())
{
    m_result.issueKey = m_issueKey;
}

void Task::begin()
{
    keep();
    start();
}

void Task::cancel()
{
    giveUp();
}

void Task::end(TLJiraResult result)
{
    if (isOver())
        return;
    result.issueKey = m_issueKey;
    m_result = std::move(result);
    finish();
}

void Task::fail(const tljira::Error& error)
{
    end(failure(error));
}

void Task::failWith(const QString& text)
{
    fail(tljira::makeError(QLatin1String(tljira::URLErrorDomain),
                           static_cast<qint64>(tljira::URLError::CannotParseResponse), text));
}

void Task::succeed()
{
    TLJiraResult done;
    done.outcome = TLJiraResult::Outcome::Done;
    end(done);
}

void Task::whenSignedIn(const std::function<void()>& proceed)
{
    if (hasLostSession())
        return;
    if (!isLoginUnread()) {
        proceed();
        return;
    }
    readLogin([weak = weakFrom(this), proceed](const auto& error) {
        const auto self = weak.lock();
        if (!self || self->isOver())
            return;
        if (error)
            self->fail(*error);
        else if (!self->hasLostSession())
            proceed();
    });
}

// An address that has only been typed in leaves the session as it is, which may then go on to its own server.
bool Task::hasLostSession()
{
    const QJsonObject login = savedLogin();
    if (withoutServer(login) == withoutServer(m_login) ||
        records::isSameServer(login.value(kJiraURL), m_login.value(kJiraURL)))
        return false;
    fail(noLongerSignedIn());
    return true;
}

bool Task::lacksKey()
{
    if (!m_issueKey.trimmed().isEmpty())
        return false;
    fail(tljira::makeError(QLatin1String(tljira::URLErrorDomain), static_cast<qint64>(tljira::URLError::BadURL),
                           QStringLiteral("The key of an issue is missing.")));
    return true;
}

void Task::stop()
{
    // A file that has come would still be put somewhere; all else ends with the session.
    if (m_client)
        m_client->cancelDownload();
}

// The session's requests go with it, and with them all that they keep; here none of its calls is under way. An upload
// that does not end keeps the client that keeps it.
void Task::tell()
{
    const auto client = std::exchange(m_client, nullptr);
    client->setUpladTask(nullptr);
    client->setSession(tljira::URLSession::sessionWithConfiguration(client->session()->configuration(), {}));
    tellHost();
}

} // namespace client
