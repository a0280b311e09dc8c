#include "platform/foundation/values/Numbers.h"

#include <gmock/gmock.h>

#include <cmath>

namespace {

using tljira::truncatedToInt64;

constexpr qint64 lowest = std::numeric_limits<qint64>::min();

TEST(NumbersTest, cutsOffBehindThePoint)
{
    EXPECT_EQ(truncatedToInt64(0.0), 0);
    EXPECT_EQ(truncatedToInt64(0.999), 0);
    EXPECT_EQ(truncatedToInt64(99.9999), 99);
    EXPECT_EQ(truncatedToInt64(-1.9), -1);
}

TEST(NumbersTest, keepsWhatFits)
{
    EXPECT_EQ(truncatedToInt64(9007199254740993.0), 9007199254740992);
    EXPECT_EQ(truncatedToInt64(std::nextafter(0x1p63, 0)), 9223372036854774784);
    EXPECT_EQ(truncatedToInt64(-0x1p63), lowest);
}

TEST(NumbersTest, givesTheLowestValueForWhatDoesNotFit)
{
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double number : {infinity, -infinity, std::nan(""), 0x1p63, 1e300, std::nextafter(-0x1p63, -infinity)})
        EXPECT_EQ(truncatedToInt64(number), lowest) << number;
}

} // namespace
