#include "cli/ProgressLine.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using cli::progressLine;

TEST(ProgressLine, showsShareBarBytesRateAndTimeLeft)
{
    EXPECT_EQ(progressLine({45'100'000, 100'000'000, 12'300'000.0, 5s}, 79),
              u" 45% [###########--------------] 45.1 MB of 100.0 MB  12.3 MB/s  0:05 left     "_s);
}

TEST(ProgressLine, leavesOutWhatIsNotKnown)
{
    EXPECT_EQ(progressLine({0, 999, std::nullopt, std::nullopt}, 60),
              u"  0% 0 bytes of 999 bytes                                   "_s);
}

TEST(ProgressLine, dropsTheBarAndThenTheEndWhereRoomIsShort)
{
    EXPECT_EQ(progressLine({1'000'000, 2'000'000, 500'000.0, 2s}, 45),
              u" 50% 1.0 MB of 2.0 MB  500.0 kB/s  0:02 left "_s);
    EXPECT_EQ(progressLine({1'000'000, 2'000'000, 500'000.0, 2s}, 10), u" 50% 1.0 M"_s);
}

TEST(ProgressLine, fillsTheWidthExactly)
{
    for (int columns = 1; columns < 200; ++columns)
        EXPECT_EQ(progressLine({1, 2, 3.0, 4s}, columns).size(), columns);
}

TEST(ProgressLine, writesMinutesAndHours)
{
    EXPECT_TRUE(progressLine({1, 2, 1.0, 61s}, 79).contains(u"  1:01 left"_s));
    EXPECT_TRUE(progressLine({1, 2, 1.0, 2h + 3min + 4s}, 79).contains(u"  2:03:04 left"_s));
}

TEST(ProgressLine, isFullAtTheEndAndForNothing)
{
    EXPECT_TRUE(
        progressLine({10, 10, std::nullopt, std::nullopt}, 79).startsWith(u"100% [#########################]"_s));
    EXPECT_TRUE(progressLine({0, 0, std::nullopt, std::nullopt}, 79).startsWith(u"100% "_s));
}

TEST(ProgressLine, neverPassesOneHundredPercent)
{
    EXPECT_TRUE(
        progressLine({30, 10, std::nullopt, std::nullopt}, 79).startsWith(u"100% [#########################]"_s));
}

} // namespace
