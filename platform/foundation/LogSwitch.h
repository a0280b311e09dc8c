#pragma once

#include "platform/foundation/Export.h"

namespace tljira {

/// Whether the framework writes its log, which it does until told otherwise. The lines of a login hold the password.
///
/// Switched off, nothing is written and nothing is even formatted, whatever filter rules, environment variables and
/// message handlers the process has or gets later; those of the host are left alone. From any thread at any time, also
/// before the application object is made.
TL_EXPORT void setLogEnabled(bool enabled);

/// What setLogEnabled() was last told; true at the start.
TL_EXPORT bool isLogEnabled();

} // namespace tljira
