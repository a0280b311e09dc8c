#pragma once

#include "platform/foundation/loading/URLRequest.h"
#include "records/SavedToken.h"

#include <QString>

#include <optional>

namespace client {

/// What every request of the client has in common: the method, 60 seconds of time-out, the protocol's own caching, and
/// the saved session, if there is one, as its "cookie" header. Under a sign-in by token there is the saved token in
/// place of all cookies, if the request goes to its server.
tljira::URLRequest sessionRequest(const QString& method, const std::optional<QString>& url);

/// The same, and JSON is what it has and wants.
tljira::URLRequest jsonRequest(const QString& method, const std::optional<QString>& url);

/// A GET for JSON with a token that is not saved, of the server at `url`.
tljira::URLRequest tokenRequest(const records::SavedToken& token, const std::optional<QString>& url);

} // namespace client
