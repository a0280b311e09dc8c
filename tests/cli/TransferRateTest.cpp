#include "cli/TransferRate.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using cli::TransferRate;

TEST(TransferRate, knowsNothingWithoutSamples)
{
    const TransferRate rate;
    EXPECT_EQ(rate.bytesPerSecond(10s), std::nullopt);
    EXPECT_EQ(rate.timeLeft(100, 10s), std::nullopt);
}

TEST(TransferRate, waitsUntilEnoughTimeHasPassed)
{
    TransferRate rate;
    rate.addSample(0, 0ms);
    rate.addSample(1000, 249ms);
    EXPECT_EQ(rate.bytesPerSecond(249ms), std::nullopt);
    EXPECT_EQ(rate.bytesPerSecond(250ms), 4000.0);
}

TEST(TransferRate, dividesBytesByTime)
{
    TransferRate rate;
    rate.addSample(0, 1000ms);
    rate.addSample(500, 1500ms);
    rate.addSample(3000, 3000ms);
    EXPECT_EQ(rate.bytesPerSecond(3000ms), 1500.0);
    EXPECT_EQ(rate.timeLeft(6000, 3000ms), 2s);
}

TEST(TransferRate, roundsTheTimeLeftUp)
{
    TransferRate rate;
    rate.addSample(0, 0ms);
    rate.addSample(1000, 1000ms);
    EXPECT_EQ(rate.timeLeft(2001, 1000ms), 2s);
    EXPECT_EQ(rate.timeLeft(1000, 1000ms), 0s);
}

TEST(TransferRate, forgetsWhatIsOlderThanFiveSeconds)
{
    TransferRate rate;
    rate.addSample(0, 0ms);
    for (int second = 1; second <= 10; ++second)
        rate.addSample(1000 * second, std::chrono::seconds(second));
    for (int second = 11; second <= 16; ++second)
        rate.addSample(10000 + 4000 * (second - 10), std::chrono::seconds(second));
    EXPECT_EQ(rate.bytesPerSecond(16s), 4000.0);
}

TEST(TransferRate, sinksWhileNothingMoves)
{
    TransferRate rate;
    rate.addSample(0, 0ms);
    rate.addSample(4000, 1000ms);
    EXPECT_EQ(rate.bytesPerSecond(2000ms), 2000.0);
    EXPECT_EQ(rate.bytesPerSecond(4000ms), 1000.0);
    EXPECT_EQ(rate.timeLeft(8000, 4000ms), 4s);
    EXPECT_EQ(rate.bytesPerSecond(6000ms), 0.0);
    EXPECT_EQ(rate.timeLeft(8000, 6000ms), std::nullopt);
}

TEST(TransferRate, hasNoTimeLeftWhenNothingHasMoved)
{
    TransferRate rate;
    rate.addSample(0, 0ms);
    EXPECT_EQ(rate.bytesPerSecond(1000ms), 0.0);
    EXPECT_EQ(rate.timeLeft(10, 1000ms), std::nullopt);
}

TEST(TransferRate, hasNoTimeLeftWhenTheTotalIsWrongOrFarAway)
{
    TransferRate rate;
    rate.addSample(0, 0ms);
    rate.addSample(10, 1000ms);
    EXPECT_EQ(rate.timeLeft(9, 1000ms), std::nullopt);
    EXPECT_EQ(rate.timeLeft(qint64(1) << 62, 1000ms), std::nullopt);
}

} // namespace
