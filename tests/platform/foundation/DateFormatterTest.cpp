#include "platform/foundation/values/DateFormatter.h"

#include "tests/kit/Printers.h"

#include <unicode/timezone.h>
#include <unicode/uloc.h>
#include <unicode/uvernum.h>

#include <gtest/gtest.h>

namespace {

using tljira::DateFormatter;

void becomeUser(const char* locale, const char* zone)
{
    UErrorCode status = U_ZERO_ERROR;
    uloc_setDefault(locale, &status);
    ASSERT_TRUE(U_SUCCESS(status));
    icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone(zone));
}

TEST(DateFormatter, mediumStyleFollowsLocaleAndZone)
{
    const QDateTime date = QDateTime::fromString(QStringLiteral("2017-03-14T09:22:33.123Z"), Qt::ISODateWithMs);
    becomeUser("de_DE", "Europe/Berlin");
    EXPECT_EQ(DateFormatter::withMediumStyle().stringFromDate(date), QStringLiteral("14.03.2017, 10:22:33"));
    becomeUser("de_DE", "America/New_York");
    EXPECT_EQ(DateFormatter::withMediumStyle().stringFromDate(date), QStringLiteral("14.03.2017, 05:22:33"));

    becomeUser("en_US", "Europe/Berlin");
    // Since version 72 ICU's English puts a narrow blank that does not break (U+202F) before AM and PM.
    const QString blank = U_ICU_VERSION_MAJOR_NUM >= 72 ? QStringLiteral("\u202f") : QStringLiteral(" ");
    EXPECT_EQ(DateFormatter::withMediumStyle().stringFromDate(date),
              QStringLiteral("Mar 14, 2017, 10:22:33") + blank + QStringLiteral("AM"));
}

TEST(DateFormatter, writesNothingForADateThatIsNone)
{
    EXPECT_EQ(DateFormatter::withMediumStyle().stringFromDate(QDateTime()), QString());
}

TEST(DateFormatter, mayBeMoved)
{
    becomeUser("de_DE", "Europe/Berlin");
    DateFormatter formatter = DateFormatter::withMediumStyle();
    becomeUser("en_US", "Europe/Berlin");
    DateFormatter other = DateFormatter::withMediumStyle();
    other = std::move(formatter);
    const DateFormatter moved = std::move(other);
    EXPECT_EQ(moved.stringFromDate(QDateTime::fromString(QStringLiteral("2017-03-14T09:22:33Z"), Qt::ISODate)),
              QStringLiteral("14.03.2017, 10:22:33"));
}

} // namespace
