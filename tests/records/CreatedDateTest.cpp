#include "records/CreatedDate.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

std::optional<QDateTime> parsed(const char16_t* text)
{
    return records::createdDate(QString::fromUtf16(text));
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
                                         Accepted{u"2017-03-14T10:22:33.123GMT-3:30", u"2017-03-14T13:52:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123UTC", u"2017-03-14T10:22:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123z", u"2017-03-14T10:22:33.123Z"},
                                         Accepted{u"2017-03-14T10:22:33.123+2359", u"2017-03-13T10:23:33.123Z"},
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
                    u"2017-03-14T10:22:33.123Europe/Berlin", u"2017-03-14T10:22:33.123+0160",
                    u"2017-03-14T10:22:33.123+", u"2017-03-14T10:22:33.123GMT+", u"2017-03-14T10:22:33.123PST",
                    u"0000-03-14T10:22:33.123Z", u"2017-03-14t10:22:33.123Z",
                    u"2017-03-14T10:22:33.123+0100\n2017-03-14T10:22:33.123+0100"));

/// What a user's language and calendar prefer is not what a server writes.
TEST(CreatedDate, takesNoDigitsButThoseOfTheServer)
{
    EXPECT_EQ(parsed(u"\u0662\u0660\u0661\u0667-03-14T10:22:33.123Z"), std::nullopt);
    EXPECT_EQ(parsed(u"2017-03-14T10:22:33.12\u0663Z"), std::nullopt);
}

} // namespace
