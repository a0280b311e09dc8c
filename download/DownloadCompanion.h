#pragma once

#include "platform/foundation/loading/URLSessionTask.h"
#include "records/JAAttachmentObject.h"

#include <memory>

class JAListAttachedFilesWindow;

/// Hears which attachment a list's user asked for. A list has none unless one joins it. Main thread only.
class DownloadCompanion
{
public:
    virtual ~DownloadCompanion();

    /// The download has begun; `task` is the client's.
    virtual void downloadBegan(const JAAttachmentObject& attachment,
                               const std::shared_ptr<tljira::URLSessionDownloadTask>& task) = 0;

    /// Joins the list until it goes.
    static void join(const JAListAttachedFilesWindow& list, const std::weak_ptr<DownloadCompanion>& companion);
    /// Null for none.
    static std::shared_ptr<DownloadCompanion> of(const JAListAttachedFilesWindow& list);
};
