#include "platform/foundation/Log.h"

#include "tests/support/LogCapture.h"
#include "tests/support/Printers.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

struct Counted
{
    int& descriptions;

    friend QString describe(const Counted& counted)
    {
        ++counted.descriptions;
        return QStringLiteral("counted");
    }
};

TEST(Log, WritesTheFormattedLineToItsCategory)
{
    const tests::LogCapture capture;
    tljira::log(u" %@ \n%@ ", 7, std::nullopt);
    EXPECT_EQ(capture.lines(), QStringList{QStringLiteral(" 7 \n(null) ")});
    EXPECT_STREQ(tljira::logCategory().categoryName(), "platform.log");
}

TEST(Log, IsOnByDefault)
{
    EXPECT_TRUE(tljira::logCategory().isInfoEnabled());
}

TEST(Log, SilencedCategoryCostsNoFormatting)
{
    const tests::LogCapture capture;
    int descriptions = 0;
    tljira::log(u"%@", Counted{descriptions});
    ASSERT_EQ(descriptions, 1);
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=false"));
    tljira::log(u"%@", Counted{descriptions});
    EXPECT_EQ(descriptions, 1);
    EXPECT_EQ(capture.lines(), QStringList{QStringLiteral("counted")});
}

TEST(Log, TakesLinesFromEveryThread)
{
    const tests::LogCapture capture;
    {
        std::vector<std::jthread> threads;
        for (int number = 0; number < 4; ++number)
            threads.emplace_back([number] {
                for (int line = 0; line < 100; ++line)
                    tljira::log(u"%d", number);
            });
    }
    const QStringList lines = capture.lines();
    EXPECT_EQ(lines.size(), 400);
    EXPECT_EQ(lines.count(QStringLiteral("3")), 100);
}

} // namespace
