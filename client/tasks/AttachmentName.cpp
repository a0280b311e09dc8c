#include "client/tasks/AttachmentName.h"

#include <algorithm>

bool client::canBeAttachmentName(const QString& name)
{
    const bool hasControls =
        std::any_of(name.begin(), name.end(), [](QChar c) { return c.category() == QChar::Other_Control; });
    return !name.trimmed().isEmpty() && !hasControls;
}
