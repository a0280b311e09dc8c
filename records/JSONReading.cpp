#include "records/JSONReading.h"

#include "platform/foundation/values/Format.h"
#include "platform/foundation/values/Numbers.h"

#include <limits>

namespace records {

std::optional<QString> text(const QJsonValue& value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<QString> textOrNumber(const QJsonValue& value)
{
    return value.isDouble() ? std::optional(tljira::describe(value)) : text(value);
}

qint64 integer(const QJsonValue& value)
{
    if (!value.isDouble())
        return 0;
    constexpr qint64 lowest = std::numeric_limits<qint64>::lowest();
    if (const qint64 whole = value.toInteger(lowest); whole != lowest)
        return whole;
    return tljira::truncatedToInt64(value.toDouble());
}

} // namespace records
