#pragma once

#include "platform/foundation/loading/URLRequest.h"

#include <QString>

#include <optional>

namespace client {

/// What every request of the client has in common: the method, 60 seconds of time-out, the protocol's own caching, and
/// the saved session, if there is one, as its "cookie" header.
tljira::URLRequest sessionRequest(const QString& method, const std::optional<QString>& url);

} // namespace client
