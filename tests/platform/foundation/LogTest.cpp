#include "platform/foundation/Log.h"

#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"

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

TEST(Log, writesTheFormattedLineToItsCategory)
{
    const tests::LogCapture capture;
    tljira::log(u" %@ \n%@ ", 7, std::nullopt);
    EXPECT_EQ(capture.lines(), QStringList{QStringLiteral(" 7 \n(null) ")});
    EXPECT_STREQ(tljira::logCategory().categoryName(), "platform.log");
}

TEST(Log, isOnByDefault)
{
    EXPECT_TRUE(tljira::logCategory().isInfoEnabled());
}

TEST(Log, silencedCategoryCostsNoFormatting)
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

TEST(Log, switchedOffIsSilentWhateverTheRulesSay)
{
    const tests::LogCapture capture;
    int descriptions = 0;
    QLoggingCategory::setFilterRules(QStringLiteral("*.info=true"));
    tljira::setLogEnabled(false);
    tljira::log(u"%@", Counted{descriptions});
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=true\n*=true"));
    tljira::log(u"%@", Counted{descriptions});

    EXPECT_TRUE(tljira::logCategory().isInfoEnabled());
    EXPECT_FALSE(tljira::isLogEnabled());
    EXPECT_EQ(descriptions, 0);
    EXPECT_EQ(capture.lines(), QStringList());
}

TEST(Log, switchedOnAgainGoesOn)
{
    const tests::LogCapture capture;
    tljira::setLogEnabled(false);
    tljira::setLogEnabled(true);
    tljira::log(u"line");

    EXPECT_EQ(capture.lines(), QStringList{QStringLiteral("line")});
}

TEST(Log, switchedOffLeavesTheHostsOwnCategoriesAlone)
{
    const tests::LogCapture capture;
    const QLoggingCategory own("host.own", QtInfoMsg);
    tljira::setLogEnabled(false);

    EXPECT_TRUE(own.isInfoEnabled());
}

TEST(Log, takesLinesFromEveryThread)
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
