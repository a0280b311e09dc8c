#pragma once

#include "platform/foundation/values/Error.h"

/// What the user can do about it, in English, a text of the context "JAUploadingWindow". After an attempt the document
/// is gone from where the host had put it, so it has to be attached again.
const char* adviceFor(const tljira::Error& error);

/// The same for a document that is still there: another press of the button sends it.
const char* adviceToTryAgain(const tljira::Error& error);
