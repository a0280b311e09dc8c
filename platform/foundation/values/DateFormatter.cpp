#include "platform/foundation/values/DateFormatter.h"

#include "platform/foundation/values/DatePattern.h"

#include <QTimeZone>

#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include <utility>

namespace tljira {

namespace {

icu::UnicodeString toICU(const QString& text)
{
    const auto length = static_cast<int32_t>(text.size());
    return icu::UnicodeString(false, reinterpret_cast<const char16_t*>(text.utf16()), length);
}

} // namespace

struct DateFormatter::Formatter
{
    Formatter(std::unique_ptr<icu::DateFormat> icuFormat, DatePattern datePattern)
        : format(std::move(icuFormat))
        , pattern(std::move(datePattern))
    {
        if (format)
            format->setLenient(false);
    }

    std::unique_ptr<icu::DateFormat> format;
    DatePattern pattern;
};

DateFormatter::DateFormatter(std::unique_ptr<Formatter> formatter)
    : m_formatter(std::move(formatter))
{
}

DateFormatter::DateFormatter(DateFormatter&&) noexcept = default;
DateFormatter& DateFormatter::operator=(DateFormatter&&) noexcept = default;
DateFormatter::~DateFormatter() = default;

DateFormatter DateFormatter::withPattern(const QString& pattern)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale neutral("en_US_POSIX");
    auto format = std::make_unique<icu::SimpleDateFormat>(toICU(pattern), neutral, status);
    if (U_SUCCESS(status))
        format->adoptCalendar(new icu::GregorianCalendar(neutral, status));
    if (U_FAILURE(status))
        format.reset();
    return DateFormatter(std::make_unique<Formatter>(std::move(format), DatePattern(pattern)));
}

DateFormatter DateFormatter::withMediumStyle()
{
    std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateTimeInstance(icu::DateFormat::kMedium, icu::DateFormat::kMedium));
    return DateFormatter(std::make_unique<Formatter>(std::move(format), DatePattern({})));
}

std::optional<QDateTime> DateFormatter::dateFromString(const QString& text) const
{
    const QString trimmed = text.trimmed();
    if (!m_formatter->format || !m_formatter->pattern.fits(trimmed))
        return std::nullopt;
    icu::ParsePosition position(0);
    const UDate milliseconds = m_formatter->format->parse(toICU(trimmed), position);
    if (position.getErrorIndex() >= 0 || position.getIndex() == 0 || position.getIndex() < trimmed.size())
        return std::nullopt;
    // Qt 6.4 and 6.9 have no other words for UTC in common; toUTC() makes the zone of that name the plain Qt::UTC.
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(milliseconds), QTimeZone::utc()).toUTC();
}

QString DateFormatter::stringFromDate(const QDateTime& date) const
{
    if (!m_formatter->format || !date.isValid())
        return {};
    icu::UnicodeString text;
    m_formatter->format->format(static_cast<UDate>(date.toMSecsSinceEpoch()), text);
    return QString::fromUtf16(text.getBuffer(), text.length());
}

} // namespace tljira
