#pragma once

#include "platform/foundation/Export.h"

/// @file
/// Which framework a program runs with, also for tools that look into the library's file.

extern "C" {

/// Major version before the point, minor behind it.
TL_EXPORT extern const double TLJiraControllerVersionNumber;

/// The line that the tool "what" looks for. Ends with a line feed and a zero byte.
TL_EXPORT extern const unsigned char TLJiraControllerVersionString[];
}
