// Every job without a window with every option of the host, each by itself.

#include "tests/client/tasks/TaskTest.h"
#include "tests/kit/OptionWorld.h"

namespace {

using namespace tests;

/// The server of TaskTest is one that nobody asks.
class OptionTaskTest : public testing::WithParamInterface<Choice>, public OptionWorld, public TaskTest
{
protected:
    OptionTaskTest()
        : OptionWorld(GetParam())
    {
    }
    void SetUp() override {}
};

INSTANTIATE_TEST_SUITE_P(All, OptionTaskTest, testing::ValuesIn(allChoices()), testing::PrintToStringParamName());

TEST_P(OptionTaskTest, doesEveryJob)
{
    signIn(address());
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
    ASSERT_EQ(listed.size(), document() == u"plan" ? 3U : 2U);
    EXPECT_EQ(listed[0]->name(), document());
    TLJiraTask::fetch(QStringLiteral("ABC-1"), listed[0]->ID().value_or(QString()), remember());
    ASSERT_TRUE(waitForEnds(5));
    EXPECT_EQ(ends[4].outcome, Outcome::Done);
    EXPECT_EQ(contentsOf(ends[4].path), QByteArray("warp"));
    expectTheChoice();
    EXPECT_EQ(TaskTest::server.requestCount(), 0U);
}

TEST_P(OptionTaskTest, isWhatTheServerIsReachedBy)
{
    TLJiraOptions::use({});
    signIn(address());
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    EXPECT_EQ(OptionWorld::server.requestCount(), 0U);
}

} // namespace
