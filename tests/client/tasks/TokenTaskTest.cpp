#include "constants/JAConstants.h"
#include "records/SavedLogin.h"
#include "records/SavedToken.h"
#include "records/TLJiraOptions.h"
#include "tests/client/tasks/TaskTest.h"

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;

struct Kind
{
    const char* name;
    const char* user;
    const char* token;
};

std::ostream& operator<<(std::ostream& out, const Kind& kind)
{
    return out << kind.name;
}

/// A host without windows that chose tokens. Nobody is signed in at the start.
class TokenTaskTest : public TaskTest, public testing::WithParamInterface<Kind>
{
protected:
    ~TokenTaskTest() override { TLJiraOptions::use({}); }
    void SetUp() override { TLJiraOptions::use({.signIn = TLJiraOptions::SignIn::Token}); }

    void signInWith(const char* token)
    {
        TLJiraTask::signIn(Jira::address, QLatin1String(GetParam().user), QLatin1String(token), remember());
        ASSERT_TRUE(waitForEnds());
    }

    static QString savedText()
    {
        const auto token = records::savedToken();
        return token ? token->user + u'|' + token->token : QString();
    }
};

INSTANTIATE_TEST_SUITE_P(Both, TokenTaskTest,
                         testing::Values(Kind{"basic", Jira::email, Jira::apiToken},
                                         Kind{"bearer", "", Jira::accessToken}),
                         testing::PrintToStringParamName());

TEST_P(TokenTaskTest, doesEveryJob)
{
    signInWith(GetParam().token);
    ASSERT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(savedText(), QLatin1String(GetParam().user) + u'|' + QLatin1String(GetParam().token));
    EXPECT_EQ(records::savedLogin().objectForKey(kJiraURL), QJsonValue(Jira::address));
    const auto id = store("plan.tessaloom", "wool");
    const auto tasks = {attach("silk"), fetch(id), list()};
    ASSERT_TRUE(waitForEnds(1 + tasks.size()));
    for (const Result& end : ends)
        EXPECT_EQ(end.outcome, Outcome::Done);
    EXPECT_EQ(attached().size(), 2U);
    EXPECT_FALSE(listed.empty());
    for (const auto& request : server.requests()) {
        EXPECT_NE(request.header("Authorization"), "") << request.target;
        EXPECT_EQ(request.headerCount("Cookie"), 0) << request.target;
    }
}

TEST_P(TokenTaskTest, thatIsRefusedLeavesNothing)
{
    signInWith("wrong");
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    EXPECT_EQ(ends[0].error->localizedDescription(), QStringLiteral("The server does not accept this token."));
    EXPECT_EQ(savedText(), QString());
    EXPECT_EQ(records::savedLogin().objectForKey(kJiraURL), std::nullopt);
}

TEST_P(TokenTaskTest, isNotMadeOfAPageForPeople)
{
    server.misbehave(Match(), Fault().status(200, "<html>log in</html>", "text/html"));
    signInWith(GetParam().token);
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    EXPECT_EQ(savedText(), QString());
}

} // namespace
