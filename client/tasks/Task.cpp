#include "client/tasks/Task.h"

#include "client/KeyringLogin.h"
#include "client/tasks/TransferResult.h"

#include <utility>

namespace client {

Task::Task(const QString& issueKey)
    : m_issueKey(issueKey)
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
        else
            proceed();
    });
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
