#pragma once

#include "platform/foundation/Export.h"

#include <QDateTime>
#include <QString>

#include <memory>

namespace tljira {

/// Writes points in time as the user is used to. Making one costs far more than a use of it: keep it for a run of
/// dates. Not for several threads at once.
class TL_EXPORT DateFormatter
{
public:
    /// Medium date and medium time of the user's locale, calendar and time zone.
    static DateFormatter withMediumStyle();

    DateFormatter(DateFormatter&&) noexcept;
    DateFormatter& operator=(DateFormatter&&) noexcept;
    ~DateFormatter();

    /// Empty for an invalid date.
    QString stringFromDate(const QDateTime& date) const;

private:
    /// ICU's own.
    struct Format;
    explicit DateFormatter(std::unique_ptr<Format> format);

    std::unique_ptr<Format> m_format;
};

} // namespace tljira
