#include "platform/foundation/values/DateFormatter.h"

#include <unicode/datefmt.h>

#include <utility>

namespace tljira {

struct DateFormatter::Format
{
    /// None when ICU has no data.
    std::unique_ptr<icu::DateFormat> icu;
};

DateFormatter::DateFormatter(std::unique_ptr<Format> format)
    : m_format(std::move(format))
{
}

DateFormatter::DateFormatter(DateFormatter&&) noexcept = default;
DateFormatter& DateFormatter::operator=(DateFormatter&&) noexcept = default;
DateFormatter::~DateFormatter() = default;

DateFormatter DateFormatter::withMediumStyle()
{
    constexpr auto medium = icu::DateFormat::kMedium;
    std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateTimeInstance(medium, medium));
    return DateFormatter(std::make_unique<Format>(Format{std::move(format)}));
}

QString DateFormatter::stringFromDate(const QDateTime& date) const
{
    if (!m_format->icu || !date.isValid())
        return {};
    icu::UnicodeString text;
    m_format->icu->format(static_cast<UDate>(date.toMSecsSinceEpoch()), text);
    return QString::fromUtf16(text.getBuffer(), text.length());
}

} // namespace tljira
