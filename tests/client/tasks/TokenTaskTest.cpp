#include "records/SavedToken.h"
#include "records/TLJiraOptions.h"
#include "tests/client/tasks/TaskTest.h"

namespace {

using namespace tests;

struct Way
{
    const char* name;
    const char* user;
    const char* token;
    const char* authorization;
};

void PrintTo(const Way& way, std::ostream* out)
{
    *out << way.name;
}

/// Jobs without windows of a host that chose tokens, at a server with a port in its address.
class TokenTaskTest : public TaskTest, public testing::WithParamInterface<Way>
{
protected:
    TokenTaskTest()
    {
        TLJiraOptions::use({.address = TLJiraOptions::Address::Whole, .signIn = TLJiraOptions::SignIn::Token});
    }
    ~TokenTaskTest() override { TLJiraOptions::use({}); }
    void SetUp() override {}

    bool signInWith(const QString& token)
    {
        const QString address = QStringLiteral("http://127.0.0.1:%1").arg(server.port());
        TLJiraTask::signIn(address, QString::fromUtf8(GetParam().user), token, remember());
        return waitForEnds();
    }
};

TEST_P(TokenTaskTest, doAllTheirWorkWithIt)
{
    ASSERT_TRUE(signInWith(QString::fromUtf8(GetParam().token)));
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    attach("warp");
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
    list();
    ASSERT_TRUE(waitForEnds(3));
    ASSERT_EQ(listed.size(), 1U);
    TLJiraTask::fetch(QStringLiteral("ABC-1"), listed[0]->ID().value_or(QString()), remember());
    ASSERT_TRUE(waitForEnds(4));
    EXPECT_EQ(contentsOf(ends[3].path), QByteArray("warp"));

    ASSERT_GE(server.requests().size(), 5U);
    for (const auto& request : server.requests()) {
        EXPECT_THAT(request.header("authorization"), testing::StartsWith(GetParam().authorization)) << request.path;
        EXPECT_EQ(request.headerCount("cookie"), 0) << request.path;
    }
}

TEST_P(TokenTaskTest, saveNothingThatTheServerRefuses)
{
    ASSERT_TRUE(signInWith(QStringLiteral("wrong")));

    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->localizedDescription(), QStringLiteral("The server does not accept this token."));
    EXPECT_FALSE(records::savedToken().has_value());
}

INSTANTIATE_TEST_SUITE_P(Kinds, TokenTaskTest,
                         testing::Values(Way{"basic", Jira::email, Jira::apiToken, "Basic "},
                                         Way{"bearer", "", Jira::accessToken, "Bearer "}));

} // namespace
