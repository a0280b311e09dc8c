#pragma once

#include "platform/foundation/values/Error.h"

#include <curl/curl.h>

namespace tljira {

/// The platform's error for a transfer to `host` that libcurl ended with `code`; `systemError` is the number of the
/// system call that failed, or 0.
Error errorOfCurl(CURLcode code, long systemError, const QString& host);

} // namespace tljira
