#pragma once

#include <chrono>
#include <string>

namespace tests {

/// Runs the event loop until for so long no thread of the process has run at all. What ends by itself, as a thread does
/// that finds no more work, gets the time to: this many spans are tried. Answers who ran in the last one, or nothing.
std::string whoRunsWhileIdle(std::chrono::milliseconds span, int tries);

} // namespace tests
