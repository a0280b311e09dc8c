#include "platform/foundation/values/DateFormatter.h"
#include "tests/fuzz/Fuzz.h"

/// The text of a point in time, as Jira writes it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto formatter = tljira::DateFormatter::withPattern(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss.SSSZ"));
    const QString text = fuzz::textOf(data, size);
    const auto date = formatter.dateFromString(text);
    if (!date)
        return 0;
    fuzz::require(date->isValid() && date->timeSpec() == Qt::UTC, "a date is a point in time, in UTC");
    const auto again = formatter.dateFromString(formatter.stringFromDate(*date));
    fuzz::require(again == date, "a date can be written and read again");
    return 0;
}
