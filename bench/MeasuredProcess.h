#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// What one run of a command took, from outside.
struct Measurement
{
    double seconds = 0;
    std::int64_t peakBytes = 0;
};

/// Runs a command to its end with its output thrown away. Throws std::runtime_error when it cannot be started or fails:
/// a command that fails early would look fast.
Measurement measureProcess(const std::vector<std::string>& command);

} // namespace bench
