#pragma once

#include "client/tasks/TLJiraDocument.h"
#include "platform/foundation/Export.h"

/// Documents that are a file of the host, for hosts that hand over a path. Unlike a writer of the host's they may be
/// read on any thread, so that a slow disk holds up no window.
namespace client::FileDocument {

/// The file's bytes, as they are when an upload begins. Where it cannot be read to its end the upload says why.
TL_EXPORT TLJiraDocument of(const QString& name, const QString& path);

/// Whether the host's own code writes the document, which has to run on the main thread.
TL_EXPORT bool isWrittenByHost(const TLJiraDocument& document);

} // namespace client::FileDocument
