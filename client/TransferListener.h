#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/loading/URLSessionTask.h"
#include "platform/foundation/values/Error.h"

#include <QJsonValue>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace client {

/// Hears how the transfers of every client end, beside those who asked for them. Nobody listens unless added. Main
/// thread only.
class TL_EXPORT TransferListener
{
public:
    virtual ~TransferListener();

    /// What the server answered to the upload of the file at `path`; nothing if that is no JSON. Before the upload's
    /// own callback.
    virtual void uploadAnswered(const QString& path, const std::optional<QJsonValue>& answer);
    /// The file has been put into its place, or that has failed.
    virtual void downloadArrived(const tljira::URLSessionTask& task, const QString& path);
    /// Of any kind of task; after downloadArrived().
    virtual void taskEnded(const tljira::URLSessionTask& task, const std::optional<tljira::Error>& error);

    /// Listens for as long as it lives.
    static void add(const std::weak_ptr<TransferListener>& listener);
    static void tell(const std::function<void(TransferListener&)>& news);
};

} // namespace client
