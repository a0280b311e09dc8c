#pragma once

#include "platform/foundation/Export.h"

#include <QString>

namespace client {

/// Whether an attachment can be called so: neither blank nor with control characters. The name stands in a header line
/// as it is, where a line end would begin another one.
TL_EXPORT bool canBeAttachmentName(const QString& name);

} // namespace client
