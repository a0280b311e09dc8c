#pragma once

#include "platform/foundation/Export.h"

#include <QString>
#include <QVariant>

namespace tljira {

/// What "%@" prints of a value that a host hands over as a QVariant. Maps, lists, texts and numbers print as those of
/// JSON do, rectangles as "{{x, y}, {w, h}}", points and sizes as "{x, y}", an object as "<Class: 0xADDRESS>", and a
/// value that has no text as "<Type>". Inside maps and lists what is no plain word stands in quotation marks.
TL_EXPORT QString describe(const QVariant& value);

} // namespace tljira
