#pragma once

#include "client/tasks/TLJiraResult.h"
#include "platform/foundation/Export.h"

#include <QJsonValue>

namespace client {

/// The result of what ended with this error: a cancel is no failure.
TL_EXPORT TLJiraResult failure(const tljira::Error& error);

/// The result of an upload to this issue that the server answered like this; nothing if that was no JSON.
TL_EXPORT TLJiraResult attached(const QString& issueKey, const std::optional<QJsonValue>& answer);

/// Why a file that arrived is not the document, with this text for the user. What a server that does not hand out the
/// document says instead may be JSON: then that is the error's `userInfo`.
TL_EXPORT tljira::Error notTheDocument(const QString& path, const QString& text);

/// Why a file could not be written, with this text for the user.
TL_EXPORT tljira::Error writeError(const QString& text);

} // namespace client
