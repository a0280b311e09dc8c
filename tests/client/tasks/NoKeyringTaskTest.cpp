// A host that chose the desktop's keyring, in a build without QtKeychain: NoKeyring.cpp is part of this program and
// stands in front of the library's.

#include "constants/JAConstants.h"
#include "records/SavedLogin.h"
#include "tests/client/tasks/TaskTest.h"
#include "tests/kit/WithKeyringOption.h"

namespace {

using namespace tests;

class NoKeyringTaskTest : public WithKeyringOption, public TaskTest
{
protected:
    void SetUp() override {}
};

INSTANTIATE_TEST_SUITE_P(By, NoKeyringTaskTest, testing::ValuesIn(signInWays()), testing::PrintToStringParamName());

TEST_P(NoKeyringTaskTest, signsNobodyInAndKeepsNothing)
{
    TLJiraTask::signIn(Jira::address, QLatin1String(GetParam().user), QLatin1String(GetParam().secret), remember());
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->localizedDescription(),
              QStringLiteral("This program was built without support for the desktop’s keyring."));
    EXPECT_TRUE(records::savedLogin().synchronize());
    EXPECT_EQ(records::savedLogin().stringForKey(kSessionValue), std::nullopt);
    EXPECT_THAT(filesWith({GetParam().secret}), testing::IsEmpty());

    // Nobody is signed in for what comes after.
    server.forgetRequests();
    attach("warp");
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(ends[1].outcome, Outcome::Failed);
    EXPECT_THAT(attached(), testing::IsEmpty());
    for (const auto& request : server.requests())
        EXPECT_EQ(request.headerCount("Authorization") + request.headerCount("Cookie"), 0) << request.target;
}

} // namespace
