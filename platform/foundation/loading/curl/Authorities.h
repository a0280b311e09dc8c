#pragma once

#include "platform/foundation/loading/URLSessionConfiguration.h"
#include "platform/foundation/values/Error.h"

#include <curl/curl.h>

#include <optional>

namespace tljira::Authorities {

/// Sets the handle up for the authorities that may vouch for servers. Those of the configuration are read here, each
/// time: a file that was mended counts from the next request on. Why they cannot be used; nothing if they can.
std::optional<Error> use(CURL* easy, const URLSessionConfiguration& configuration);

/// The error where libcurl can make nothing of their certificates.
Error errorOf(const URLSessionConfiguration& configuration);

} // namespace tljira::Authorities
