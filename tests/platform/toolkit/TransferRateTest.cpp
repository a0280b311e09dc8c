#include "platform/toolkit/views/TransferRate.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

constexpr qint64 kilobyte = 1024;
constexpr qint64 megabyte = 1024 * kilobyte;

class TransferRateTest : public testing::Test
{
protected:
    /// Lets so many bytes come in every second, evenly, and reports them every tenth of one.
    void flow(std::chrono::milliseconds time, qint64 bytesPerSecond)
    {
        for (const auto end = now + time; now < end;) {
            now += 100ms;
            bytes += bytesPerSecond / 10;
            rate.note(bytes, total);
        }
    }

    std::chrono::milliseconds now = 1h;
    qint64 bytes = 0;
    qint64 total = 100 * megabyte;
    tljira::TransferRate rate{[this] { return now; }};
};

TEST_F(TransferRateTest, saysNothingInTheFirstSecond)
{
    EXPECT_EQ(rate.text(), QString());
    flow(900ms, megabyte);
    EXPECT_EQ(rate.text(), QString());
    EXPECT_EQ(rate.rateText(), QString());
    EXPECT_EQ(rate.timeLeftText(), QString());
    flow(100ms, megabyte);
    EXPECT_NE(rate.text(), QString());
}

TEST_F(TransferRateTest, tellsRateAndTimeLeft)
{
    total = 8 * megabyte;
    flow(4s, megabyte);
    EXPECT_EQ(rate.rateText(), QStringLiteral("1.0 MB/s"));
    EXPECT_EQ(rate.timeLeftText(), QStringLiteral("about 4 s left"));
    EXPECT_EQ(rate.text(), QStringLiteral("1.0 MB/s · about 4 s left"));
}

TEST_F(TransferRateTest, isSureOfTheTimeAfterFiveSeconds)
{
    total = 24 * megabyte;
    flow(4s, 2 * megabyte);
    EXPECT_EQ(rate.timeLeftText(), QStringLiteral("about 8 s left"));
    flow(1s, 2 * megabyte);
    EXPECT_EQ(rate.timeLeftText(), QStringLiteral("7 s left"));
}

TEST_F(TransferRateTest, tellsSlowTransfersInKilobytes)
{
    flow(3s, 640 * kilobyte);
    EXPECT_EQ(rate.rateText(), QStringLiteral("640 KB/s"));
    rate.begin();
    bytes = 0;
    flow(3s, megabyte);
    EXPECT_EQ(rate.rateText(), QStringLiteral("1.0 MB/s"));
}

TEST_F(TransferRateTest, tellsMinutesAndHoursWithoutSeconds)
{
    total = 60 * megabyte + 6 * megabyte;
    flow(6s, megabyte);
    EXPECT_EQ(rate.timeLeftText(), QStringLiteral("60 s left"));
    total = 61 * megabyte + 7 * megabyte;
    flow(1s, megabyte);
    EXPECT_EQ(rate.timeLeftText(), QStringLiteral("about 2 min left"));
    total = bytes + 3600 * megabyte;
    flow(1s, megabyte);
    EXPECT_EQ(rate.timeLeftText(), QStringLiteral("about 60 min left"));
    total = bytes + 3602 * megabyte;
    flow(1s, megabyte);
    EXPECT_EQ(rate.timeLeftText(), QStringLiteral("about 2 h left"));
}

TEST_F(TransferRateTest, tellsNoTimeBeyondADay)
{
    total = 86'403 * megabyte;
    flow(5s, megabyte);
    EXPECT_EQ(rate.timeLeftText(), QStringLiteral("about 24 h left"));
    total += 6 * megabyte;
    flow(1s, megabyte);
    EXPECT_EQ(rate.timeLeftText(), QString());
    EXPECT_EQ(rate.text(), QStringLiteral("1.0 MB/s"));
}

TEST_F(TransferRateTest, tellsOnlyTheRateOfATransferOfUnknownLength)
{
    for (const qint64 unknown : {qint64(0), qint64(-1)}) {
        total = unknown;
        flow(2s, megabyte);
        EXPECT_EQ(rate.text(), QStringLiteral("1.0 MB/s"));
    }
}

TEST_F(TransferRateTest, tellsNoTimeWhereMoreHasComeThanWasAnnounced)
{
    total = megabyte;
    flow(5s, megabyte);
    EXPECT_EQ(rate.timeLeftText(), QString());
}

TEST_F(TransferRateTest, renewsItsTextsOnceASecond)
{
    flow(2s, megabyte);
    const QString before = rate.text();
    flow(900ms, 40 * megabyte);
    EXPECT_EQ(rate.text(), before);
    flow(100ms, 40 * megabyte);
    EXPECT_NE(rate.text(), before);
}

TEST_F(TransferRateTest, evensOutBursts)
{
    for (int second = 0; second < 10; ++second) {
        flow(500ms, 4 * megabyte);
        flow(500ms, 0);
    }
    const double shown = rate.rateText().section(u' ', 0, 0).toDouble();
    EXPECT_GT(shown, 1.5);
    EXPECT_LT(shown, 2.5);
}

TEST_F(TransferRateTest, followsARateThatHasChanged)
{
    flow(20s, 4 * megabyte);
    flow(10s, megabyte);
    const double shown = rate.rateText().section(u' ', 0, 0).toDouble();
    EXPECT_GE(shown, 1.0);
    EXPECT_LT(shown, 1.3);
}

TEST_F(TransferRateTest, fallsToNothingWhenNothingComes)
{
    flow(5s, megabyte);
    flow(60s, 0);
    EXPECT_EQ(rate.text(), QStringLiteral("0 KB/s"));
}

TEST_F(TransferRateTest, forgetsTheTransferBefore)
{
    flow(10s, 8 * megabyte);
    rate.begin();
    EXPECT_EQ(rate.text(), QString());
    bytes = 0;
    total = 8 * megabyte;
    flow(2s, megabyte);
    EXPECT_EQ(rate.text(), QStringLiteral("1.0 MB/s · about 6 s left"));
}

TEST_F(TransferRateTest, takesReportsInTheSameMoment)
{
    for (int report = 0; report < 10; ++report)
        rate.note(report, total);
    now += 2s;
    rate.note(4 * megabyte, total);
    rate.note(4 * megabyte, total);
    EXPECT_EQ(rate.rateText(), QStringLiteral("2.0 MB/s"));
}

TEST_F(TransferRateTest, hasAClockOfItsOwn)
{
    tljira::TransferRate own;
    own.note(megabyte, total);
    EXPECT_EQ(own.text(), QString());
}

} // namespace
