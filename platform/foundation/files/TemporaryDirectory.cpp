#include "platform/foundation/files/TemporaryDirectory.h"

#include "platform/foundation/os/PrivateFolder.h"

#include <QDir>
#include <QTemporaryDir>

#include <mutex>

namespace tljira {

namespace {

QString folderNamed(const QString& ending)
{
    // Empty when TMPDIR names a folder that is not there.
    const QString base = QDir::tempPath();
    return QDir(base.isEmpty() ? QDir::rootPath() + QStringLiteral("tmp") : base)
        .absoluteFilePath(QStringLiteral("TLJiraController-") + ending);
}

/// A folder under a name that nobody could foresee.
QString folderOfProcess()
{
    static std::mutex& mutex = *new std::mutex;
    static QString& path = *new QString;
    const std::lock_guard lock(mutex);
    if (path.isEmpty() || !os::ensurePrivateFolder(path)) {
        QTemporaryDir fresh(folderNamed(QStringLiteral("XXXXXX")));
        fresh.setAutoRemove(false);
        path = fresh.path();
    }
    return path;
}

} // namespace

QString temporaryDirectory()
{
    const QString shared = folderNamed(os::userIdentifier());
    return os::ensurePrivateFolder(shared) ? shared : folderOfProcess();
}

} // namespace tljira
