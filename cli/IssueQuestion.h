#pragma once

#include "cli/Outcome.h"
#include "client/JAController.h"

namespace cli {

/// Asks for an issue. Either the issue is there, or the outcome says why not: an answer of status 200 that is no issue,
/// such as a page for people to log in, must not pass for an issue without attachments.
void askForIssue(
    JAController& client, const QString& key,
    const std::function<void(const std::shared_ptr<const JAIssueObject>& issue, const Outcome& failure)>& answer);

} // namespace cli
