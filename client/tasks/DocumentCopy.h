#pragma once

#include "client/tasks/TLJiraDocument.h"
#include "platform/foundation/Export.h"
#include "platform/foundation/files/ScratchFolder.h"

#include <QFile>
#include <QString>

#include <optional>

namespace client {

/// A document in a file, alone in a folder of the user's own that goes when this does.
class TL_EXPORT DocumentCopy
{
public:
    /// From any thread, unless the host's own code writes the document. Answers why there is no copy, without a text
    /// where the writer did not say; nothing if there is one.
    std::optional<QString> write(const TLJiraDocument& document);

    QString path() const;

    /// Removes those of processes that are no more, on another thread; the first time that it is called.
    static void tidyOnce();

private:
    tljira::ScratchFolder m_folder;
};

} // namespace client
