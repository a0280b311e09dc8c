#include "platform/foundation/files/TemporaryDirectory.h"

#include "platform/foundation/ProcessExit.h"
#include "platform/foundation/os/PrivateFolder.h"

#include <QDir>
#include <QTemporaryDir>
#include <QUuid>

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
class FolderOfProcess
{
public:
    static FolderOfProcess& instance()
    {
        // Never destroyed: files may come and go until the last moment of the process.
        static auto& folder = *new FolderOfProcess;
        return folder;
    }

    QString path()
    {
        const std::lock_guard lock(m_mutex);
        if (m_path.isEmpty() || !os::ensurePrivateFolder(m_path)) {
            QTemporaryDir fresh(folderNamed(QStringLiteral("XXXXXX")));
            fresh.setAutoRemove(false);
            m_path = fresh.isValid() ? fresh.path() : folderNamed(QUuid::createUuid().toString(QUuid::Id128));
            m_made << m_path;
        }
        return m_path;
    }

private:
    FolderOfProcess()
    {
        whenProcessExits([] { instance().removeIfEmpty(); });
    }

    /// No other process will find it again.
    void removeIfEmpty()
    {
        const std::lock_guard lock(m_mutex);
        for (const QString& path : std::as_const(m_made))
            QDir().rmdir(path);
    }

    std::mutex m_mutex;
    QString m_path;
    /// More than one when one was gone, or could not be looked at.
    QStringList m_made;
};

} // namespace

QString temporaryDirectory()
{
    const QString shared = folderNamed(os::userIdentifier());
    return os::ensurePrivateFolder(shared) ? shared : FolderOfProcess::instance().path();
}

} // namespace tljira
