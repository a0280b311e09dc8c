#include "platform/foundation/Log.h"

#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <algorithm>
#include <atomic>
#include <future>
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

class LogFunction : public testing::Test
{
protected:
    using Function = tljira::LogSettings::Function;
    ~LogFunction() override { tljira::setLogSettings({}); }

    static void choose(const Function& function)
    {
        tljira::setLogSettings(
            {tljira::LogSettings::Target::Function, std::make_shared<const Function>(function), true});
    }
    Function keep()
    {
        return [this](const QString& line) { told.append(line); };
    }

    const tests::LogCapture capture;
    QStringList told;
};

TEST_F(LogFunction, isToldInPlaceOfTheCategoryWhateverTheRulesSay)
{
    choose(keep());
    tljira::log(u"one");
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=false"));
    tljira::log(u"two");
    EXPECT_EQ(told, (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    EXPECT_EQ(capture.lines(), QStringList());

    tljira::setLogEnabled(false);
    tljira::log(u"three");
    EXPECT_EQ(told.size(), 2);
}

TEST_F(LogFunction, isNotToldWhatItLogsItself)
{
    choose([this](const QString& line) {
        tljira::log(u"about %@", line);
        told.append(line);
    });
    tljira::log(u"one");
    tljira::log(u"two");
    EXPECT_EQ(told, (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    EXPECT_EQ(capture.lines(), QStringList());
}

TEST_F(LogFunction, mayThrow)
{
    choose([this](const QString& line) {
        told.append(line);
        throw 1;
    });
    tljira::log(u"one");
    tljira::log(u"two");
    EXPECT_EQ(told, (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
}

TEST_F(LogFunction, mayChooseAnother)
{
    choose([this](const QString& line) {
        told.append(QStringLiteral("first: ") + line);
        choose(keep());
    });
    tljira::log(u"one");
    tljira::log(u"two");
    EXPECT_EQ(told, (QStringList{QStringLiteral("first: one"), QStringLiteral("two")}));
}

TEST_F(LogFunction, isToldOneLineAtATimeByAllThreads)
{
    int inside = 0;
    int most = 0;
    choose([&](const QString& line) {
        most = std::max(most, ++inside);
        std::this_thread::yield();
        told.append(line);
        --inside;
    });
    {
        std::vector<std::jthread> threads;
        for (int number = 0; number < 4; ++number)
            threads.emplace_back([number] {
                for (int line = 0; line < 200; ++line)
                    tljira::log(u"%d %d", number, line);
            });
    }
    EXPECT_EQ(most, 1);
    ASSERT_EQ(told.size(), 800);
    for (int number = 0; number < 4; ++number) {
        const QString own = QString::number(number) + u' ';
        const QStringList lines = told.filter(QRegularExpression(QStringLiteral("^") + own));
        for (int line = 0; line < 200; ++line)
            ASSERT_EQ(lines.at(line), own + QString::number(line));
    }
}

TEST_F(LogFunction, isNotToldAnyMoreOnceAnotherIsChosen)
{
    std::promise<void> inside;
    std::promise<void> mayEnd;
    std::atomic<bool> hasEnded = false;
    choose([&](const QString&) {
        inside.set_value();
        mayEnd.get_future().wait();
        hasEnded = true;
    });
    const std::jthread logger([] { tljira::log(u"one"); });
    inside.get_future().wait();
    const std::jthread opener([&] { mayEnd.set_value(); });
    choose(keep());
    EXPECT_TRUE(hasEnded);
    tljira::log(u"two");
    EXPECT_EQ(told, QStringList{QStringLiteral("two")});
}

TEST_F(LogFunction, isNoneWhereItIsEmpty)
{
    choose({});
    tljira::log(u"one");
    tljira::setLogSettings({tljira::LogSettings::Target::Function, nullptr, true});
    tljira::log(u"two");
    EXPECT_EQ(capture.lines(), QStringList());
}

TEST_F(LogFunction, goesBackToTheCategory)
{
    choose(keep());
    tljira::setLogSettings({});
    tljira::log(u"one");
    EXPECT_EQ(capture.lines(), QStringList{QStringLiteral("one")});
    EXPECT_EQ(told, QStringList());
}

TEST(Log, canBeSentNowhereAtNoCost)
{
    const tests::LogCapture capture;
    int descriptions = 0;
    tljira::setLogSettings({.target = tljira::LogSettings::Target::Nowhere});
    tljira::log(u"%@", Counted{descriptions});
    tljira::setLogSettings({});
    EXPECT_EQ(descriptions, 0);
    EXPECT_EQ(capture.lines(), QStringList());
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
