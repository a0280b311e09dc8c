#include "client/CallIfSet.h"
#include "client/JAController.h"
#include "client/SessionRequest.h"
#include "client/TransferListener.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/files/FileManager.h"

void JAController::downloadFile(const std::optional<QString>& url, const DownloadCallBack& callBack,
                                const QString& path)
{
    const auto task = session()->downloadTaskWithRequest(client::sessionRequest(QStringLiteral("GET"), url));
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

void JAController::didWriteData(const std::shared_ptr<tljira::URLSessionDownloadTask>&, qint64 bytesWritten,
                                qint64 totalBytesWritten, qint64 totalBytesExpectedToWrite)
{
    tljira::log(u"didWriteData: %lld, totalBytesWritten %lld, totalBytesExpectedToWrite: %lld", bytesWritten,
                totalBytesWritten, totalBytesExpectedToWrite);
    client::callIfSet(downloadCallBack(), bytesWritten, totalBytesWritten, std::nullopt, false);
}

void JAController::didFinishDownloadingToURL(const std::shared_ptr<tljira::URLSessionDownloadTask>& task,
                                             const QString& location)
{
    tljira::log(u"didFinishDownloadingToURL: %@", location);
    client::callIfSet(downloadCallBack(), 100, 100, std::nullopt, true);
    setDownloadCallBack(nullptr);

    const QString destination = savePath().value_or(QString());
    const auto removeError = tljira::FileManager::removeItemAtPath(destination);
    tljira::log(u"Remove item error: %@", removeError);
    const auto moveError = tljira::FileManager::moveItemAtPath(location, destination);
    tljira::log(u"Move item error: %@", moveError);
    tljira::log(u"New location: %@", destination);
    const auto description = removeError ? std::optional(removeError->localizedDescription()) : std::nullopt;
    tljira::log(u"Move downloaded path error: %@", description);
    if (task)
        client::TransferListener::tell(
            [&](client::TransferListener& listener) { listener.downloadArrived(*task, destination); });
}

void JAController::didResumeAtOffset(const std::shared_ptr<tljira::URLSessionDownloadTask>&, qint64 fileOffset,
                                     qint64 expectedTotalBytes)
{
    tljira::log(u"didResumeAtOffset: %lld, expectedTotalBytes %lld", fileOffset, expectedTotalBytes);
}

void JAController::didCompleteWithError(const std::shared_ptr<tljira::URLSessionTask>& task,
                                        const std::optional<tljira::Error>& error)
{
    tljira::log(u"Error task: %@", task ? task->hash() : 0);
    client::callIfSet(downloadCallBack(), 0, 0, error, false);
    if (task)
        client::TransferListener::tell([&](client::TransferListener& listener) { listener.taskEnded(*task, error); });
}
