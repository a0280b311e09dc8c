#pragma once

#include <limits>

#include <QtGlobal>

namespace tljira {

/// The whole part of a number. What has none that fits (infinity, NaN, a number out of range) gives the lowest value.
inline qint64 truncatedToInt64(double number)
{
    constexpr double limit = 9223372036854775808.0; // 2^63, the first that does not fit
    return number >= -limit && number < limit ? static_cast<qint64>(number) : std::numeric_limits<qint64>::min();
}

} // namespace tljira
