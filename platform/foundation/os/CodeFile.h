#pragma once

#include <QString>

/// What a port to another system has to provide to find files that are installed beside a library.
namespace tljira::os {

/// The path of the library, or of the program, that this function was linked into. Empty when the system does not say.
QString fileOfThisCode();

} // namespace tljira::os
