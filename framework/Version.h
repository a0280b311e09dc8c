#pragma once

#include "platform/foundation/Export.h"

// Which framework a program runs with, also for tools that look into the library's file.

extern "C" {

TL_EXPORT extern const double TLJiraControllerVersionNumber;

/// Ends with a line feed and a zero byte.
TL_EXPORT extern const unsigned char TLJiraControllerVersionString[];
}
