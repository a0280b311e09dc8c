#pragma once

#include <QString>

/// What the windows of the jobs say beside what their own floors say, in the user's language. Main thread only.
namespace JobTexts {

/// With a place for what the document is to be called.
QString notAName();
/// With a place for the reason.
QString noCopy();
/// A reason: the host's writer gave none.
QString notWritten();
/// What arrived has another size than the document; with places for both.
QString notTheDocument();
/// With a place for the reason.
QString notKept();

} // namespace JobTexts
