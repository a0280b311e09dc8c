#include "platform/foundation/values/DatePattern.h"

#include <gtest/gtest.h>

namespace {

bool fits(const char16_t* pattern, const char16_t* text)
{
    return tljira::DatePattern(QString::fromUtf16(pattern)).fits(QString::fromUtf16(text));
}

TEST(DatePattern, countsTheDigitsOfEveryNumber)
{
    EXPECT_TRUE(fits(u"yyyy-MM-dd", u"2017-03-14"));
    EXPECT_TRUE(fits(u"yyyy-M-d", u"2017-3-14"));
    EXPECT_FALSE(fits(u"yyyy-MM-dd", u"2017-3-14"));
    EXPECT_FALSE(fits(u"yyyy-MM-dd", u"2017-03-4"));
    EXPECT_FALSE(fits(u"yyyy-MM-dd", u"2017-03- 4"));
    EXPECT_FALSE(fits(u"yyyy-MM-dd", u"2017-03"));
    EXPECT_FALSE(fits(u"H:mm", u"100:22"));
}

TEST(DatePattern, adjoiningNumbersHaveFixedLengths)
{
    EXPECT_TRUE(fits(u"yyyyMMddHHmmss", u"20170314102233"));
    EXPECT_FALSE(fits(u"yyyyMMddHHmmss", u"2017314102233"));
}

TEST(DatePattern, quotedTextStandsForItself)
{
    EXPECT_TRUE(fits(u"dd'd''M'MM", u"14d'M03"));
    EXPECT_FALSE(fits(u"dd'd'MM", u"14x03"));
    EXPECT_TRUE(fits(u"HH 'o''clock'", u"10 o'clock"));
    EXPECT_TRUE(fits(u"HH''mm", u"10'22"));
}

TEST(DatePattern, leavesOffAtTheFirstFieldOfText)
{
    EXPECT_TRUE(fits(u"dd MMM yyyy", u"14 whatever"));
    EXPECT_TRUE(fits(u"HH:mmZZZ", u"10:22+0100"));
    EXPECT_FALSE(fits(u"HH:mmZZZ", u"10:22 +0100"));
    EXPECT_TRUE(fits(u"", u"anything"));
}

} // namespace
