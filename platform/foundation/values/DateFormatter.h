#pragma once

#include "platform/foundation/Export.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <optional>

namespace tljira {

/// Reads and writes points in time by a Unicode date pattern or the user's own styles. Making one costs far more than a
/// use of it: keep it for a run of dates. Not for several threads at once.
class TL_EXPORT DateFormatter
{
public:
    /// Strict: what does not match the pattern to the last character (outer blanks aside) or names no real date is
    /// refused. Years are Gregorian and names English, whatever the user's locale prefers. A pattern without a zone
    /// means the user's own.
    static DateFormatter withPattern(const QString& pattern);

    /// Medium date and medium time of the user's locale, calendar and time zone.
    static DateFormatter withMediumStyle();

    DateFormatter(DateFormatter&&) noexcept;
    DateFormatter& operator=(DateFormatter&&) noexcept;
    ~DateFormatter();

    /// In UTC, to the millisecond.
    std::optional<QDateTime> dateFromString(const QString& text) const;
    QString stringFromDate(const QDateTime& date) const;

private:
    struct Formatter;
    explicit DateFormatter(std::unique_ptr<Formatter> formatter);

    std::unique_ptr<Formatter> m_formatter;
};

} // namespace tljira
