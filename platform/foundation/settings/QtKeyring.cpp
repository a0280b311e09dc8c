#include "platform/foundation/MainQueue.h"
#include "platform/foundation/settings/Keyring.h"

#include <qt6keychain/keychain.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QLibrary>

#include <deque>
#include <utility>

namespace tljira {

namespace {

/// The name of the text among those of the application.
constexpr QLatin1String entryName("login");

/// What is asked for, one thing after the other. Each says when it has ended.
class Line
{
public:
    using Work = std::function<void(const std::function<void()>& ended)>;

    static Line& instance()
    {
        // Never destroyed: the keyring may answer while the process ends.
        static auto& line = *new Line;
        return line;
    }

    void add(const Work& work)
    {
        m_waiting.push_back(work);
        if (!m_isBusy)
            next();
    }

    /// What the library has been asked never ends when the application does.
    void drop()
    {
        m_waiting.clear();
        m_isBusy = false;
        ++m_application;
    }

private:
    void next()
    {
        m_isBusy = !m_waiting.empty();
        if (!m_isBusy)
            return;
        const Work work = std::move(m_waiting.front());
        m_waiting.pop_front();
        work([this, application = m_application] {
            if (application == m_application)
                next();
        });
    }

    std::deque<Work> m_waiting;
    bool m_isBusy = false;
    int m_application = 0;
};

/// As it names the folder of the settings, so that each application has a text of its own.
QString serviceName()
{
    const QString organization = QCoreApplication::organizationName();
    const QString application = QCoreApplication::applicationName();
    return organization.isEmpty() ? application : organization + u'/' + application;
}

/// libsecret, behind the library, brings its answers to GLib's event loop alone: in another they would never come.
bool isAnswered()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    const auto* const dispatcher = QAbstractEventDispatcher::instance();
    return dispatcher && dispatcher->inherits("QEventDispatcherGlib");
#else
    return true;
#endif
}

/// libsecret goes on speaking to a keyring that has ended, and never to the one that was started in its place.
void lookForKeyringAnew()
{
    QLibrary library(QStringLiteral("secret-1"), 0);
    if (const auto disconnect = reinterpret_cast<void (*)()>(library.resolve("secret_service_disconnect")))
        disconnect();
}

Keyring::Problem problemOf(QKeychain::Error error)
{
    switch (error) {
    case QKeychain::EntryNotFound:
        return Keyring::Problem::NotFound;
    case QKeychain::AccessDenied:
    case QKeychain::AccessDeniedByUser:
    case QKeychain::CouldNotDeleteEntry:
        return Keyring::Problem::Locked;
    default:
        return Keyring::Problem::Unreachable;
    }
}

bool isUnreachable(const QKeychain::Job& job)
{
    return job.error() != QKeychain::NoError && problemOf(job.error()) == Keyring::Problem::Unreachable;
}

/// What the library says adds nothing to the other problems.
QString libraryDetail(const QKeychain::Job& job)
{
    return isUnreachable(job) ? job.errorString() : QString();
}

using MakeJob = std::function<QKeychain::Job*()>;
using Ended = std::function<void(const QKeychain::Job& job)>;

void attempt(const MakeJob& makeJob, bool isLast, const Ended& ended)
{
    auto* const job = makeJob();
    job->setKey(entryName);
    // What it would fall back to is a file.
    job->setInsecureFallback(false);
    QObject::connect(job, &QKeychain::Job::finished, job, [makeJob, isLast, ended](const QKeychain::Job* finished) {
        if (isLast || !isUnreachable(*finished)) {
            ended(*finished);
            return;
        }
        lookForKeyringAnew();
        attempt(makeJob, true, ended);
    });
    job->start();
}

QKeychain::Job* writing(const QString& text)
{
    auto* const job = new QKeychain::WritePasswordJob(serviceName());
    job->setTextData(text);
    return job;
}

} // namespace

void Keyring::read(const Read& callBack)
{
    if (!isAnswered()) {
        MainQueue::instance().addOperation([callBack] { callBack(std::nullopt, makeError(Problem::WrongEventLoop)); });
        return;
    }
    Line::instance().add([callBack](const auto& ended) {
        const auto answered = [callBack, ended](const QKeychain::Job& job) {
            if (job.error() != QKeychain::NoError)
                callBack(std::nullopt, makeError(problemOf(job.error()), libraryDetail(job)));
            else
                callBack(static_cast<const QKeychain::ReadPasswordJob&>(job).textData(), std::nullopt);
            ended();
        };
        attempt([] { return new QKeychain::ReadPasswordJob(serviceName()); }, false, answered);
    });
}

void Keyring::write(const QString& text, const Done& callBack)
{
    if (!isAnswered()) {
        MainQueue::instance().addOperation([callBack] { callBack(makeError(Problem::WrongEventLoop)); });
        return;
    }
    Line::instance().add([text, callBack](const auto& ended) {
        const auto answered = [callBack, ended](const QKeychain::Job& job) {
            if (job.error() != QKeychain::NoError)
                callBack(makeError(problemOf(job.error()), libraryDetail(job)));
            else
                callBack(std::nullopt);
            ended();
        };
        attempt([text] { return writing(text); }, false, answered);
    });
}

// The library says that it has removed what a locked keyring goes on holding. Such a keyring takes no new text either,
// and that it says.
void Keyring::remove(const Done& callBack)
{
    if (!isAnswered()) {
        MainQueue::instance().addOperation([callBack] { callBack(makeError(Problem::WrongEventLoop)); });
        return;
    }
    Line::instance().add([callBack](const auto& ended) {
        const auto removed = [callBack, ended](const QKeychain::Job& job) {
            if (job.error() != QKeychain::NoError && job.error() != QKeychain::EntryNotFound)
                callBack(makeError(Problem::NotRemoved, libraryDetail(job)));
            else
                callBack(std::nullopt);
            ended();
        };
        const auto overwritten = [removed](const QKeychain::Job& job) {
            if (job.error() != QKeychain::NoError)
                removed(job);
            else
                attempt([] { return new QKeychain::DeletePasswordJob(serviceName()); }, false, removed);
        };
        attempt([] { return writing({}); }, false, overwritten);
    });
}

namespace {

void followApplication()
{
    qAddPostRoutine([] { Line::instance().drop(); });
}

Q_COREAPP_STARTUP_FUNCTION(followApplication)

} // namespace

} // namespace tljira
