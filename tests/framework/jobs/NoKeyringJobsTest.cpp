// The windows of a host that chose the desktop's keyring, in a build without QtKeychain: NoKeyring.cpp is part of this
// program and stands in front of the library's.

#include "records/SavedLogin.h"
#include "shell/JALoginWindow.h"
#include "tests/framework/jobs/JobsTest.h"
#include "tests/kit/WithKeyringOption.h"

namespace {

using namespace tests;

class NoKeyringJobsTest : public WithKeyringOption, public JobsTest
{
protected:
    void SetUp() override { host->show(); }

    /// The form says it, and neither lets anybody in nor keeps anything.
    void expectARefusalBy(JALoginWindow& form)
    {
        ASSERT_TRUE(waitUntil([&] { return ui::isOnScreen(form.loginButton()); }));
        ui::type(form.hostTextField(), address);
        ui::type(form.emailTextField(), QLatin1String(GetParam().user));
        ui::type(form.passwordTextField(), QLatin1String(GetParam().secret));
        ui::click(form.loginButton());
        ASSERT_TRUE(waitUntil([&] { return ui::isOnScreen(form.errorLabel()) && form.loginButton()->isEnabled(); }));
        EXPECT_EQ(form.errorLabel()->text(),
                  QStringLiteral("This program was built without support for the desktop’s keyring."));
        EXPECT_TRUE(ui::isOnScreen(form.passwordTextField()));
        EXPECT_TRUE(records::savedLogin().synchronize());
        EXPECT_THAT(filesWith({GetParam().secret}), testing::IsEmpty());
    }
};

INSTANTIATE_TEST_SUITE_P(By, NoKeyringJobsTest, testing::ValuesIn(signInWays()), testing::PrintToStringParamName());

TEST_P(NoKeyringJobsTest, attachesNothing)
{
    ASSERT_TRUE(attach({QStringLiteral("plan.tessaloom"), bytes}));
    expectARefusalBy(*upload->jaLoginWindow());
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
}

TEST_P(NoKeyringJobsTest, fetchesNothing)
{
    ASSERT_TRUE(fetch());
    expectARefusalBy(*entry->jaLoginWindow());
    closeByTitleBar(*entry);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
}

} // namespace
