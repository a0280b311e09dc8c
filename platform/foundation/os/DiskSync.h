#pragma once

#include <cstdio>
#include <system_error>

/// What a port to another system has to provide for bytes that outlive a power cut.
namespace tljira::os {

/// Returns when what was written to the file, which has no buffer of its own, is on the disk.
std::error_code syncToDisk(std::FILE* file);

} // namespace tljira::os
