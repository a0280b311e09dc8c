#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"

#include <QString>

#include <memory>
#include <optional>

namespace tljira {

class URLSessionTask;
class URLSessionDownloadTask;

/// What a session tells of its tasks. All calls come on the main thread, those of one task in order.
class TL_EXPORT URLSessionDelegate
{
public:
    virtual ~URLSessionDelegate() = default;

    /// Part of a body was sent: bytes since the last call, bytes so far, bytes in all. At most about 60 times a second
    /// and task, and once more when the last byte was sent. The increments add up to the total.
    virtual void didSendBodyData(const std::shared_ptr<URLSessionTask>& task, qint64 bytesSent, qint64 totalBytesSent,
                                 qint64 totalBytesExpectedToSend);

    /// Part of a download was written; as above. The expected total is -1 when the answer did not announce it.
    virtual void didWriteData(const std::shared_ptr<URLSessionDownloadTask>& task, qint64 bytesWritten,
                              qint64 totalBytesWritten, qint64 totalBytesExpectedToWrite);

    /// A download is complete, whatever its status. The file at `location` is removed when this call returns: move it
    /// away.
    virtual void didFinishDownloadingToURL(const std::shared_ptr<URLSessionDownloadTask>& task,
                                           const QString& location);

    /// A download went on behind bytes that it already had. Sessions of this kind start every download at its first
    /// byte.
    virtual void didResumeAtOffset(const std::shared_ptr<URLSessionDownloadTask>& task, qint64 fileOffset,
                                   qint64 expectedTotalBytes);

    /// The end of every task, exactly once, data tasks with a completion of their own included. Nothing as error is
    /// success.
    virtual void didCompleteWithError(const std::shared_ptr<URLSessionTask>& task, const std::optional<Error>& error);
};

} // namespace tljira
