// Every job without a window with every option of the host, each by itself, in every way to sign in.

#include "tests/client/tasks/TaskTest.h"
#include "tests/kit/OptionWorld.h"

namespace {

using namespace tests;

/// The server of TaskTest is one that nobody asks.
class OptionTaskTest : public testing::WithParamInterface<ChoiceAndWay>, public OptionWorld, public TaskTest
{
protected:
    OptionTaskTest()
        : OptionWorld(GetParam())
    {
    }
    void SetUp() override {}

    void signInHere()
    {
        TLJiraTask::signIn(address(), QLatin1String(way().user), QLatin1String(way().secret), remember());
    }
};

INSTANTIATE_TEST_SUITE_P(All, OptionTaskTest, allChoicesAndWays(), nameOfChoiceAndWay);

TEST_P(OptionTaskTest, doesEveryJob)
{
    signInHere();
    ASSERT_TRUE(waitForEnds());
    ASSERT_EQ(ends[0].outcome, Outcome::Done)
        << ends[0].error.value_or(tljira::Error()).localizedDescription().toStdString();
    TLJiraTask::askWhoIsSignedIn([this](const Result& result, const auto& who) {
        ends.push_back(result);
        user = who;
    });
    ASSERT_TRUE(waitForEnds(2));
    ASSERT_NE(user, nullptr);
    TLJiraTask::attach({document(), QByteArray("warp")}, QStringLiteral("ABC-1"), remember());
    ASSERT_TRUE(waitForEnds(3));
    EXPECT_EQ(ends[2].outcome, Outcome::Done);
    list();
    ASSERT_TRUE(waitForEnds(4));
    ASSERT_EQ(TaskTest::listed.size(), OptionWorld::listed());
    EXPECT_EQ(TaskTest::listed[0]->name(), document());
    TLJiraTask::fetch(QStringLiteral("ABC-1"), TaskTest::listed[0]->ID().value_or(QString()), remember());
    ASSERT_TRUE(waitForEnds(5));
    EXPECT_EQ(ends[4].outcome, Outcome::Done);
    EXPECT_EQ(contentsOf(ends[4].path), QByteArray("warp"));
    expectTheChoice(log.lines());
    EXPECT_EQ(TaskTest::server.requestCount(), 0U);
}

TEST_P(OptionTaskTest, isWhatTheServerIsReachedBy)
{
    TLJiraOptions::use({});
    signInHere();
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    EXPECT_EQ(OptionWorld::server.requestCount(), 0U);
}

} // namespace
