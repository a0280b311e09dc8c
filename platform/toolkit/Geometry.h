#pragma once

#include <QRectF>
#include <QString>

namespace platform {

/// "{{x, y}, {w, h}}", whole numbers without a decimal point.
QString describe(const QRectF& rect);

} // namespace platform
