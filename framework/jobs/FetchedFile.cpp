#include "framework/jobs/FetchedFile.h"

#include "framework/jobs/JobTexts.h"
#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/files/TemporaryDirectory.h"

#include <QDir>
#include <QTemporaryDir>

namespace {

FetchedFile::Place failed(const QString& reason)
{
    const auto code = static_cast<qint64>(tljira::FileError::WriteUnknown);
    return {QString(),
            tljira::makeError(QLatin1String(tljira::CocoaErrorDomain), code, JobTexts::notKept().arg(reason))};
}

} // namespace

FetchedFile::Place FetchedFile::take(const QString& file, const QString& name)
{
    const QString parent = tljira::temporaryDirectory();
    if (parent.isEmpty())
        return failed(QDir::tempPath());
    QTemporaryDir folder(tljira::appendingPathComponent(parent, QStringLiteral("Fetched-XXXXXX")));
    if (!folder.isValid())
        return failed(folder.errorString());
    const QString path = tljira::appendingPathComponent(folder.path(), tljira::fileNameFromUntrustedText(name));
    if (const auto error = tljira::FileManager::moveItemAtPath(file, path))
        return failed(error->localizedDescription());
    folder.setAutoRemove(false);
    return {path, std::nullopt};
}

void FetchedFile::remove(const QString& path)
{
    tljira::FileManager::removeItemAtPath(tljira::deletingLastPathComponent(path));
}
