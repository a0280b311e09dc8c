#pragma once

#include "client/Answer.h"
#include "records/SavedToken.h"

#include <QString>

#include <optional>

namespace client {

/// Domain of errors of what was given as a token, before any server has seen it; their codes are those of TokenProblem.
inline constexpr char tokenDomain[] = "invalid token";

enum class TokenProblem : qint64 {
    Missing = 1,
    NoToken = 2, ///< no server gives out such a text: it has blanks, line breaks or characters beyond ASCII
    NoUser = 3   ///< has a colon, which parts user and token, or a line break
};

/// The token as it was given, without blanks around it and its user, for the server at `url`. Where that is no address
/// of a server, it has no origin.
records::SavedToken offeredToken(const std::optional<QString>& user, const std::optional<QString>& token,
                                 const std::optional<QString>& url);

/// Why nothing can be done with the token; nothing when it may be tried.
std::optional<tljira::Error> problemOfToken(const records::SavedToken& token);

/// "Basic …" for a user's API token, "Bearer …" for a personal access token.
QString authorizationOf(const records::SavedToken& token);

/// The saved token's, for a request to its own scheme, host and port; nothing for any other.
std::optional<QString> authorizationFor(const std::optional<QString>& url);

/// Whether this is the word of the token's server about whose token it is. What came by a redirect from elsewhere is
/// not: the token did not go there.
bool namesAccount(const records::SavedToken& token, const Answer& answer,
                  const std::optional<tljira::HTTPURLResponse>& response);

/// The error for a token that was not accepted, in words.
tljira::Error refusedToken(const records::SavedToken& token, const Answer& answer,
                           const std::optional<tljira::HTTPURLResponse>& response);

/// The error where there is no token to ask a server with.
tljira::Error noToken();

} // namespace client
