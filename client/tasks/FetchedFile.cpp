#include "client/tasks/FetchedFile.h"

#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/files/TemporaryDirectory.h"

#include <QDir>
#include <QTemporaryDir>

namespace client {

FetchedFile::Place FetchedFile::take(const QString& file, const QString& name)
{
    const QString parent = tljira::temporaryDirectory();
    QTemporaryDir folder(tljira::appendingPathComponent(parent, QStringLiteral("Fetched-XXXXXX")));
    if (!folder.isValid())
        return {QString(), folder.errorString()};
    const QString path = tljira::appendingPathComponent(folder.path(), tljira::fileNameFromUntrustedText(name));
    if (const auto error = tljira::FileManager::moveItemAtPath(file, path)) {
        // Qt looks into the folder before it removes it, for which there may be no descriptor left.
        QDir().rmdir(folder.path());
        return {QString(), error->localizedDescription()};
    }
    folder.setAutoRemove(false);
    return {path, std::nullopt};
}

void FetchedFile::remove(const QString& path)
{
    tljira::FileManager::removeItemAtPath(tljira::deletingLastPathComponent(path));
}

} // namespace client
