#pragma once

#include "platform/foundation/loading/HTTPURLResponse.h"
#include "platform/foundation/loading/curl/TemporaryFile.h"
#include "platform/foundation/values/Data.h"
#include "platform/foundation/values/Error.h"

#include <memory>
#include <optional>

namespace tljira {

/// Bytes moved so far, and in all where known (-1 otherwise).
struct TransferProgress
{
    qint64 sent = 0;
    qint64 expectedToSend = 0;
    qint64 written = 0;
    qint64 expectedToWrite = -1;
};

/// How a transfer ended: with an error, or with an answer whose body is in memory or in a file.
struct TransferResult
{
    std::optional<Error> error;
    std::optional<HTTPURLResponse> response;
    Data body;
    std::shared_ptr<TemporaryFile> file;
};

/// Learns of a transfer, on the network thread.
class TransferObserver
{
public:
    virtual ~TransferObserver() = default;
    virtual void transferMoved(const TransferProgress& progress) = 0;
    /// Exactly once, as the last call.
    virtual void transferEnded(TransferResult result) = 0;
};

} // namespace tljira
