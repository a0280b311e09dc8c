#include "platform/foundation/settings/keychain/QtKeychainService.h"

#include <qt6keychain/keychain.h>

#include <QLibrary>

namespace tljira {

namespace {

/// libsecret, behind QtKeychain, goes on speaking to a keyring that has ended, and never to the one that was started in
/// its place.
void lookForKeyringAnew()
{
    QLibrary library(QStringLiteral("secret-1"), 0);
    if (const auto disconnect = reinterpret_cast<void (*)()>(library.resolve("secret_service_disconnect")))
        disconnect();
}

KeyringService::End endOf(const QKeychain::Job& job)
{
    switch (job.error()) {
    case QKeychain::NoError:
        return KeyringService::End::Done;
    case QKeychain::EntryNotFound:
        return KeyringService::End::NotFound;
    case QKeychain::AccessDenied:
    case QKeychain::AccessDeniedByUser:
    case QKeychain::CouldNotDeleteEntry:
        return KeyringService::End::Locked;
    default:
        return KeyringService::End::Unreachable;
    }
}

bool isUnreachable(const QKeychain::Job& job)
{
    return endOf(job) == KeyringService::End::Unreachable;
}

KeyringService::Answer answerOf(const QKeychain::Job& job)
{
    const auto* const read = qobject_cast<const QKeychain::ReadPasswordJob*>(&job);
    // What the library says adds nothing to the other ends.
    return {endOf(job), read && job.error() == QKeychain::NoError ? read->textData() : QString(),
            isUnreachable(job) ? job.errorString() : QString()};
}

using MakeJob = std::function<QKeychain::Job*()>;

void attempt(const MakeJob& makeJob, const QString& name, bool isLast, const KeyringService::CallBack& callBack)
{
    auto* const job = makeJob();
    job->setKey(name);
    // What it would fall back to is a file.
    job->setInsecureFallback(false);
    const auto finished = [makeJob, name, isLast, callBack](const QKeychain::Job* ended) {
        if (isLast || !isUnreachable(*ended)) {
            callBack(answerOf(*ended));
            return;
        }
        lookForKeyringAnew();
        attempt(makeJob, name, true, callBack);
    };
    QObject::connect(job, &QKeychain::Job::finished, job, finished);
    job->start();
}

} // namespace

void QtKeychainService::read(const Entry& entry, const CallBack& callBack)
{
    const auto makeJob = [entry] { return new QKeychain::ReadPasswordJob(entry.application); };
    attempt(makeJob, entry.name, false, callBack);
}

void QtKeychainService::write(const Entry& entry, const QString& text, const CallBack& callBack)
{
    const auto makeJob = [entry, text] {
        auto* const job = new QKeychain::WritePasswordJob(entry.application);
        job->setTextData(text);
        return job;
    };
    attempt(makeJob, entry.name, false, callBack);
}

void QtKeychainService::remove(const Entry& entry, const CallBack& callBack)
{
    const auto makeJob = [entry] { return new QKeychain::DeletePasswordJob(entry.application); };
    attempt(makeJob, entry.name, false, callBack);
}

} // namespace tljira
