// Both jobs by their windows with every option of the host, each by itself, in every way to sign in.

#include "shell/JALoginWindow.h"
#include "tests/framework/jobs/JobsTest.h"
#include "tests/kit/OptionWorld.h"

namespace {

using namespace tests;

/// The server of JobsTest is one that nobody asks.
class OptionJobsTest : public testing::WithParamInterface<ChoiceAndWay>, public OptionWorld, public JobsTest
{
protected:
    OptionJobsTest()
        : OptionWorld(GetParam())
    {
    }
    ~OptionJobsTest() override { TLJiraOptions::use({}); }
    void SetUp() override { host->show(); }

    void logInBy(JALoginWindow& form)
    {
        ASSERT_TRUE(waitUntil([&] { return ui::isOnScreen(form.loginButton()); }));
        ui::type(form.hostTextField(), address());
        ui::type(form.emailTextField(), QLatin1String(way().user));
        ui::type(form.passwordTextField(), QLatin1String(way().secret));
        ui::click(form.loginButton());
    }

    using OptionWorld::address;
};

INSTANTIATE_TEST_SUITE_P(All, OptionJobsTest, allChoicesAndWays(), nameOfChoiceAndWay);

TEST_P(OptionJobsTest, attachesListsAndFetches)
{
    ASSERT_TRUE(attach({document(), bytes}));
    logInBy(*upload->jaLoginWindow());
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(panel().uploadView()); }));
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    EXPECT_EQ(sheet().sizeLabel()->text(), QStringLiteral("DONE"));
    closeSheet();
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);

    fetchFirst();
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
    EXPECT_EQ(ends[1].attachmentName, document());
    EXPECT_EQ(contentsOf(ends[1].path), bytes);
    EXPECT_EQ(list().attachments().size(), listed());
    expectTheChoice(log.lines());
    EXPECT_EQ(JobsTest::server.requestCount(), 0U);
}

} // namespace
