#include "platform/foundation/loading/URLSessionDelegate.h"

namespace tljira {

void URLSessionDelegate::didSendBodyData(const std::shared_ptr<URLSessionTask>&, qint64, qint64, qint64) {}

void URLSessionDelegate::didWriteData(const std::shared_ptr<URLSessionDownloadTask>&, qint64, qint64, qint64) {}

void URLSessionDelegate::didFinishDownloadingToURL(const std::shared_ptr<URLSessionDownloadTask>&, const QString&) {}

void URLSessionDelegate::didResumeAtOffset(const std::shared_ptr<URLSessionDownloadTask>&, qint64, qint64) {}

void URLSessionDelegate::didCompleteWithError(const std::shared_ptr<URLSessionTask>&, const std::optional<Error>&) {}

} // namespace tljira
