#pragma once

#include "standin/Call.h"

namespace standin {

/// Whose request it is: by its "Authorization", if it has one, and otherwise by its cookies.
std::optional<std::string> userOf(const RequestHead& head, const std::vector<std::string>& cookies, const Jira& jira,
                                  const Options& options);

/// The answer of a REST resource to a request of nobody's.
Response unauthorised(const Request& request, const Options& options);

/// What a server that made a session for a request with a token sends along; nothing for other requests.
std::optional<std::string> cookieForToken(const Request& request, Jira& jira, const Options& options);

} // namespace standin
