#pragma once

#include "client/Guarded.h"
#include "client/JAController.h"

/// What a client remembers. An upload starts on another thread than the one that reports its progress.
struct JAController::State
{
    client::Guarded<std::shared_ptr<const JALoginObject>> jaSession;
    client::Guarded<std::optional<QString>> pathFile;
    client::Guarded<std::shared_ptr<JAControllerDelegate>> delegate;
    client::Guarded<std::shared_ptr<tljira::URLSession>> session;
    client::Guarded<DownloadCallBack> downloadCallBack;
    client::Guarded<UploadCallBack> uploadCallBack;
    client::Guarded<std::optional<QString>> jiraHost;
    client::Guarded<std::optional<QString>> savePath;
    client::Guarded<std::shared_ptr<tljira::URLSessionDataTask>> upladTask;
    client::Guarded<std::shared_ptr<tljira::URLSessionDownloadTask>> downloadTask;
};
