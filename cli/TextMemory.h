#pragma once

namespace cli {

/// ICU, which reads and writes dates, takes the lack of memory for a date that it cannot read, or stumbles over it.
/// From now on it ends the process, as the lack of memory does everywhere else. To be called before anything else.
void endWithoutTextMemory();

} // namespace cli
