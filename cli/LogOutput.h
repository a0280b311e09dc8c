#pragma once

namespace cli {

/// Lets the platform log and Qt's own messages through to standard error, or nothing at all of them.
void showLog(bool isShown);

} // namespace cli
