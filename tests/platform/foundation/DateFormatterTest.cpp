#include "platform/foundation/values/DateFormatter.h"

#include "tests/kit/Printers.h"

#include <unicode/timezone.h>
#include <unicode/uloc.h>
#include <unicode/uvernum.h>

#include <gtest/gtest.h>

namespace {

using tljira::DateFormatter;

constexpr char16_t ServerPattern[] = u"yyyy-MM-dd'T'HH:mm:s.SSSZZZ";

void becomeUser(const char* locale, const char* zone)
{
    UErrorCode status = U_ZERO_ERROR;
    uloc_setDefault(locale, &status);
    ASSERT_TRUE(U_SUCCESS(status));
    icu::TimeZone::adoptDefault(icu::TimeZone::createTimeZone(zone));
}

std::optional<QDateTime> parsed(const char16_t* text)
{
    return DateFormatter::withPattern(QString::fromUtf16(ServerPattern)).dateFromString(QString::fromUtf16(text));
}

QDateTime utc(const char16_t* text)
{
    return QDateTime::fromString(QString::fromUtf16(text), Qt::ISODateWithMs);
}

struct Accepted
{
    const char16_t* text;
    const char16_t* utc;
};

class AcceptedDates : public testing::TestWithParam<Accepted>
{
};

TEST_P(AcceptedDates, areReadToTheMillisecond)
{
    const auto date = parsed(GetParam().text);
    ASSERT_TRUE(date);
    EXPECT_EQ(*date, utc(GetParam().utc));
    EXPECT_EQ(date->timeSpec(), Qt::UTC);
}

INSTANTIATE_TEST_SUITE_P(All, AcceptedDates,
                         testing::Values(Accepted{u"2017-03-14T10:22:33.123+0100", u"2017-03-14T09:22:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123+01:00", u"2017-03-14T09:22:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123+01", u"2017-03-14T09:22:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123-0330", u"2017-03-14T13:52:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123+0000", u"2017-03-14T10:22:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123Z", u"2017-03-14T10:22:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123GMT", u"2017-03-14T10:22:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123GMT+1", u"2017-03-14T09:22:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:7.123+0100", u"2017-03-14T09:22:07.123Z"},
                                         Accepted{u"2017-03-14T10:22:07.123+0100", u"2017-03-14T09:22:07.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.1+0100", u"2017-03-14T09:22:33.100Z"},
                                         Accepted{u"2017-03-14T10:22:33.12+0100", u"2017-03-14T09:22:33.120Z"},
                                         Accepted{u"2017-03-14T10:22:33.1239+0100", u"2017-03-14T09:22:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123999999+0100", u"2017-03-14T09:22:33.123Z"},
                                         Accepted{u" \t2017-03-14T10:22:33.123+0100\n ", u"2017-03-14T09:22:33.123Z"},
                                         Accepted{u"2016-02-29T00:00:0.000+0000", u"2016-02-29T00:00:00.000Z"},
                                         Accepted{u"1969-12-31T23:59:59.999+0000", u"1969-12-31T23:59:59.999Z"},
                                         Accepted{u"2017-01-01T00:30:00.000+0100", u"2016-12-31T23:30:00.000Z"}));

class RefusedDates : public testing::TestWithParam<const char16_t*>
{
};

TEST_P(RefusedDates, giveNothing)
{
    EXPECT_EQ(parsed(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    All, RefusedDates,
    testing::Values(u"", u" ", u"2017-03-14", u"2017-03-14T10:22:33+0100", u"2017-03-14T10:22:33.+0100",
                    u"2017-03-14T10:22:33.123", u"2017-03-14T10:22:33.1234567890+0100",
                    u"2017-03-14T10:22:33.12345678901234+0100", u"2017-13-14T10:22:33.123+0100",
                    u"2017-00-14T10:22:33.123+0100", u"2017-02-30T10:22:33.123+0100", u"2017-02-29T10:22:33.123+0100",
                    u"2017-03-00T10:22:33.123+0100", u"2017-03-14T25:22:33.123+0100", u"2017-03-14T24:00:00.000+0100",
                    u"2017-03-14T10:60:33.123+0100", u"2017-03-14T10:22:60.123+0100", u"2017-3-14T10:22:33.123+0100",
                    u"2017-03-4T10:22:33.123+0100", u"2017-003-14T10:22:33.123+0100", u"2017-03-14T1:22:33.123+0100",
                    u"2017-03-14T10:2:33.123+0100", u"2017-03-14T10:22:333.123+0100", u"2017-03-14T10:22:33.123+0100x",
                    u"2017-03-14T10:22:33.123+0100 x", u"x2017-03-14T10:22:33.123+0100",
                    u"2017-03-14 10:22:33.123+0100", u"2017-03-14T10:22:33,123+0100", u"2017-03- 4T10:22:33.123+0100",
                    u"2017-03-14T10:22:33.123 +0100", u"2017-03-14T10:22:33.123+2500", u"-2017-03-14T10:22:33.123+0100",
                    u"2017-03-14T10:22:33.123Europe/Berlin"));

TEST(DateFormatter, oneFormatterReadsARunOfDates)
{
    const DateFormatter formatter = DateFormatter::withPattern(QString::fromUtf16(ServerPattern));
    EXPECT_EQ(formatter.dateFromString(QStringLiteral("2017-03-14T10:22:33.123+0100")),
              utc(u"2017-03-14T09:22:33.123Z"));
    EXPECT_EQ(formatter.dateFromString(QStringLiteral("nonsense")), std::nullopt);
    EXPECT_EQ(formatter.dateFromString(QStringLiteral("2017-07-14T10:22:33.123Z")), utc(u"2017-07-14T10:22:33.123Z"));
    EXPECT_EQ(formatter.dateFromString(QStringLiteral("2017-03-14T10:22:33.123-0800")),
              utc(u"2017-03-14T18:22:33.123Z"));
}

TEST(DateFormatter, patternsDoNotDependOnTheUser)
{
    for (const char* locale :
         {"th_TH", "th_TH@calendar=buddhist", "ar_EG", "fa_IR", "ja_JP@calendar=japanese", "de_DE"}) {
        becomeUser(locale, "Asia/Bangkok");
        EXPECT_EQ(parsed(u"2017-03-14T10:22:33.123+0100"), utc(u"2017-03-14T09:22:33.123Z")) << locale;
        EXPECT_EQ(parsed(u"2017-03-14T10:22:33.123GMT+1"), utc(u"2017-03-14T09:22:33.123Z")) << locale;
        EXPECT_EQ(DateFormatter::withPattern(QStringLiteral("yyyy-MM-dd HH:mm:ss.SSSZZZ"))
                      .stringFromDate(utc(u"2017-03-14T09:22:33.123Z")),
                  QStringLiteral("2017-03-14 16:22:33.123+0700"))
            << locale;
    }
}

TEST(DateFormatter, aPatternWithoutAZoneMeansTheUsersOwn)
{
    becomeUser("en_US", "Europe/Berlin");
    const DateFormatter formatter = DateFormatter::withPattern(QStringLiteral("yyyy-MM-dd HH:mm"));
    EXPECT_EQ(formatter.dateFromString(QStringLiteral("2017-03-14 10:22")), utc(u"2017-03-14T09:22:00.000Z"));
    EXPECT_EQ(formatter.dateFromString(QStringLiteral("2017-07-14 10:22")), utc(u"2017-07-14T08:22:00.000Z"));
    EXPECT_EQ(formatter.stringFromDate(utc(u"2017-07-14T08:22:00.000Z")), QStringLiteral("2017-07-14 10:22"));
}

TEST(DateFormatter, aPatternThatIsNoneReadsAndWritesNothing)
{
    const DateFormatter formatter = DateFormatter::withPattern(QStringLiteral("yyyy'unclosed"));
    EXPECT_EQ(formatter.dateFromString(QStringLiteral("2017")), std::nullopt);
    EXPECT_EQ(DateFormatter::withPattern(QStringLiteral("yyyy")).stringFromDate(QDateTime()), QString());
}

TEST(DateFormatter, mediumStyleFollowsLocaleAndZone)
{
    const QDateTime date = utc(u"2017-03-14T09:22:33.123Z");
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

TEST(DateFormatter, mediumStyleReadsWhatItWrote)
{
    becomeUser("de_DE", "Europe/Berlin");
    const DateFormatter formatter = DateFormatter::withMediumStyle();
    EXPECT_EQ(formatter.dateFromString(QStringLiteral("14.03.2017, 10:22:33")), utc(u"2017-03-14T09:22:33.000Z"));
    EXPECT_EQ(formatter.dateFromString(QStringLiteral("30.02.2017, 10:22:33")), std::nullopt);
}

TEST(DateFormatter, mayBeMoved)
{
    DateFormatter formatter = DateFormatter::withPattern(QStringLiteral("yyyy"));
    formatter = DateFormatter::withPattern(QString::fromUtf16(ServerPattern));
    const DateFormatter moved = std::move(formatter);
    EXPECT_EQ(moved.dateFromString(QStringLiteral("2017-03-14T10:22:33.123Z")), utc(u"2017-03-14T10:22:33.123Z"));
}

} // namespace
