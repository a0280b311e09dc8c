#include "download/DownloadSizes.h"

#include "tests/kit/GermanUser.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

constexpr qint64 megabyte = 1024 * 1024;

TEST(DownloadSizesTest, tellsMegabytesOf1024Times1024BytesToTwoPlaces)
{
    EXPECT_EQ(megabytesText(0), QStringLiteral("0.00 MB"));
    EXPECT_EQ(megabytesText(3 * megabyte / 2), QStringLiteral("1.50 MB"));
}

TEST(DownloadSizesTest, tellsHowMuchOfTheWholeHasCome)
{
    EXPECT_EQ(arrivedText(98 * megabyte / 10, 24 * megabyte), QStringLiteral("9.8 of 24.00 MB"));
    EXPECT_EQ(arrivedText(24 * megabyte, 24 * megabyte), QStringLiteral("24.0 of 24.00 MB"));
    EXPECT_EQ(arrivedText(1, 1), QStringLiteral("0.0 of 0.00 MB"));
}

TEST(DownloadSizesTest, leavesOutAWholeThatIsNotKnownOrTooSmall)
{
    EXPECT_EQ(arrivedText(3 * megabyte, 0), QStringLiteral("3.0 MB"));
    EXPECT_EQ(arrivedText(3 * megabyte, -5), QStringLiteral("3.0 MB"));
    EXPECT_EQ(arrivedText(3 * megabyte, 2 * megabyte), QStringLiteral("3.0 MB"));
}

class GermanDownloadSizesTest : tests::GermanUser, public testing::Test
{
};

TEST_F(GermanDownloadSizesTest, tellsHowMuchOfTheWholeHasCome)
{
    EXPECT_EQ(arrivedText(98 * megabyte / 10, 24 * megabyte), QStringLiteral("9.8 von 24.00 MB"));
}

} // namespace
