#pragma once

#include "cli/Outcome.h"
#include "client/JAController.h"

namespace cli {

/// Asks who the user is. Either the user is there, or the outcome says why not: the client takes any answer of status
/// 200, also a page for people to log in, for a record that says nothing, and a user without any name is none.
void askForUser(JAController& client,
                const std::function<void(const std::shared_ptr<const JAUser>& user, const Outcome& failure)>& answer);

} // namespace cli
