#include "platform/foundation/MainQueue.h"
#include "platform/foundation/settings/Keyring.h"

#include <qt6keychain/keychain.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

namespace tljira {

namespace {

/// The name of the text among those of the application.
const QString entryName = QStringLiteral("login");

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

/// What the library says adds nothing to the other problems.
QString libraryDetail(const QKeychain::Job& job)
{
    return problemOf(job.error()) == Keyring::Problem::Unreachable ? job.errorString() : QString();
}

using Ended = std::function<void(const QKeychain::Job* job)>;

/// Without an event loop that brings the answer: null.
void run(QKeychain::Job* job, const Ended& ended)
{
    job->setKey(entryName);
    // What it would fall back to is a file.
    job->setInsecureFallback(false);
    if (!isAnswered()) {
        delete job;
        MainQueue::instance().addOperation([ended] { ended(nullptr); });
        return;
    }
    QObject::connect(job, &QKeychain::Job::finished, job, [ended](const QKeychain::Job* finished) { ended(finished); });
    job->start();
}

} // namespace

void Keyring::read(const Read& callBack)
{
    run(new QKeychain::ReadPasswordJob(serviceName()), [callBack](const QKeychain::Job* job) {
        if (!job)
            callBack(std::nullopt, makeError(Problem::WrongEventLoop));
        else if (job->error() != QKeychain::NoError)
            callBack(std::nullopt, makeError(problemOf(job->error()), libraryDetail(*job)));
        else
            callBack(static_cast<const QKeychain::ReadPasswordJob*>(job)->textData(), std::nullopt);
    });
}

void Keyring::write(const QString& text, const Done& callBack)
{
    auto* const job = new QKeychain::WritePasswordJob(serviceName());
    job->setTextData(text);
    run(job, [callBack](const QKeychain::Job* ended) {
        if (!ended)
            callBack(makeError(Problem::WrongEventLoop));
        else if (ended->error() != QKeychain::NoError)
            callBack(makeError(problemOf(ended->error()), libraryDetail(*ended)));
        else
            callBack(std::nullopt);
    });
}

// The library says that it has removed what a locked keyring goes on holding. Such a keyring takes no new text either,
// and that it says.
void Keyring::remove(const Done& callBack)
{
    const auto writing = std::make_shared<std::optional<Error>>();
    write({}, [writing](const auto& error) { *writing = error; });
    run(new QKeychain::DeletePasswordJob(serviceName()), [writing, callBack](const QKeychain::Job* job) {
        if (!job)
            callBack(makeError(Problem::WrongEventLoop));
        else if (*writing)
            callBack(makeError(Problem::NotRemoved, detailOf(**writing)));
        else if (job->error() != QKeychain::NoError && job->error() != QKeychain::EntryNotFound)
            callBack(makeError(Problem::NotRemoved, libraryDetail(*job)));
        else
            callBack(std::nullopt);
    });
}

} // namespace tljira
