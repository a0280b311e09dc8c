#pragma once

#include <QtGlobal>

namespace tljira::os {

/// Fills in up to `capacity` bytes of the open file from this position on, as far as the system holds them in memory.
/// Never waits for a disk: where there is nothing in memory, at the end of the file, and where the system or the file
/// system cannot tell, the answer is 0.
qint64 readCached(int descriptor, qint64 position, char* buffer, qint64 capacity);

} // namespace tljira::os
