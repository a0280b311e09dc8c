#include "records/CreatedDate.h"
#include "tests/fuzz/Fuzz.h"

/// The text of a point in time, as Jira writes it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto date = records::createdDate(fuzz::textOf(data, size));
    if (!date)
        return 0;
    fuzz::require(date->isValid() && date->timeSpec() == Qt::UTC, "a date is a point in time, in UTC");
    // A zone may move the first and the last days of the calendar out of it.
    if (date->date().year() < 1 || date->date().year() > 9999)
        return 0;
    const auto again = records::createdDate(date->toString(Qt::ISODateWithMs));
    fuzz::require(again == date, "a date can be written and read again");
    return 0;
}
