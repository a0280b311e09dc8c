#include "client/CallIfSet.h"
#include "client/JAController.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"

void JAController::downloadFile(const std::optional<QString>& url, const DownloadCallBack& callBack,
                                const QString& path)
{
    platform::URLRequest request(url, platform::URLRequestCachePolicy::UseProtocolCachePolicy, 60.0);
    if (const auto cookie = JALoginObject::restoreSession())
        request.addValue(*cookie, QStringLiteral("cookie"));
    const auto task = session()->downloadTaskWithRequest(request);
    setDownloadCallBack(callBack);
    setSavePath(path);
    setDownloadTask(task);
    task->resume();
}

void JAController::cancelDownload()
{
    if (const auto task = downloadTask())
        task->cancel();
}

void JAController::didWriteData(const std::shared_ptr<platform::URLSessionDownloadTask>&, qint64 bytesWritten,
                                qint64 totalBytesWritten, qint64 totalBytesExpectedToWrite)
{
    platform::log(u"didWriteData: %lld, totalBytesWritten %lld, totalBytesExpectedToWrite: %lld", bytesWritten,
                  totalBytesWritten, totalBytesExpectedToWrite);
    client::callIfSet(downloadCallBack(), bytesWritten, totalBytesWritten, std::nullopt, false);
}

void JAController::didFinishDownloadingToURL(const std::shared_ptr<platform::URLSessionDownloadTask>&,
                                             const QString& location)
{
    platform::log(u"didFinishDownloadingToURL: %@", location);
    client::callIfSet(downloadCallBack(), 100, 100, std::nullopt, true);
    setDownloadCallBack(nullptr);

    const QString destination = savePath().value_or(QString());
    const auto removeError = platform::FileManager::removeItemAtPath(destination);
    platform::log(u"Remove item error: %@", removeError);
    const auto moveError = platform::FileManager::moveItemAtPath(location, destination);
    platform::log(u"Move item error: %@", moveError);
    platform::log(u"New location: %@", destination);
    const auto description = removeError ? std::optional(removeError->localizedDescription()) : std::nullopt;
    platform::log(u"Move downloaded path error: %@", description);
}

void JAController::didResumeAtOffset(const std::shared_ptr<platform::URLSessionDownloadTask>&, qint64 fileOffset,
                                     qint64 expectedTotalBytes)
{
    platform::log(u"didResumeAtOffset: %lld, expectedTotalBytes %lld", fileOffset, expectedTotalBytes);
}

void JAController::didCompleteWithError(const std::shared_ptr<platform::URLSessionTask>& task,
                                        const std::optional<platform::Error>& error)
{
    platform::log(u"Error task: %@", task ? task->hash() : 0);
    client::callIfSet(downloadCallBack(), 0, 0, error, false);
}
