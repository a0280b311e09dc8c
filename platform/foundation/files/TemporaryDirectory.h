#pragma once

#include "platform/foundation/Export.h"

#include <QString>

namespace tljira {

/// The folder for files that need not outlive the user's session. It lies in TMPDIR (or the system's folder), belongs
/// to the user alone (mode 0700, checked at each call and never followed through a link) and is the same for all of the
/// user's processes. Where somebody else sits on the name, the process gets a fresh folder of its own.
TL_EXPORT QString temporaryDirectory();

} // namespace tljira
