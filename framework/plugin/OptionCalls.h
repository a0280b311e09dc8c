#pragma once

#include "records/TLJiraOptions.h"

#include <QVariantMap>

/// What a host chooses for the whole process, in the words of hosts that know no C++.
namespace OptionCalls {

/// The choices by their names, and the defaults in place of those that are left out. A log that is chosen as
/// "signal" goes to `log`. Answers what is wrong with them in `problem`, empty if nothing is.
TLJiraOptions options(const QVariantMap& named, const TLJiraOptions::Log::Function& log, QString& problem);

} // namespace OptionCalls
