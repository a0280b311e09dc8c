#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/values/Error.h"

#include <QString>

namespace client {

/// What the server says about something that it did not do, in its own words: the texts under "errorMessages" and
/// "errors" of its answer, one after the other. Empty where the answer has none, or nothing was answered.
TL_EXPORT QString serverSentence(const tljira::Error& error);

} // namespace client
