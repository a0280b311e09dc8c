#include "client/ServerName.h"
#include "constants/JAConstants.h"
#include "records/SavedLogin.h"
#include "tests/client/TokenTest.h"

namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;
using tests::Jira;

const QString whole = u"http://jira.example.test:8080/jira"_s;

/// A client of a host that chose whole addresses, and a server below a path on another port.
class WholeAddressTest : public tests::ClientTest
{
protected:
    WholeAddressTest()
        : ClientTest({.contextPath = "/jira"})
    {
        TLJiraOptions::use({.address = TLJiraOptions::Address::Whole});
        client->setHost(whole);
    }
    ~WholeAddressTest() override { TLJiraOptions::use({}); }
};

TEST_F(WholeAddressTest, isWhatRoutesBeginWith)
{
    EXPECT_EQ(client->jiraHost(), whole + u'/');
    EXPECT_EQ(client->url(kCurrentUserPath), whole + u"/rest/api/2/myself"_s);
    client->setHost(u"https://[::1]:8443//jira/"_s);
    EXPECT_EQ(client->url(kCurrentUserPath), u"https://[::1]:8443/jira/rest/api/2/myself"_s);
    client->setHost(u"https://[::1]"_s);
    EXPECT_EQ(client->url(kCurrentUserPath), u"https://[::1]/rest/api/2/myself"_s);
    client->setHost(std::nullopt);
    EXPECT_EQ(client->url(kCurrentUserPath), std::nullopt);
    client->setHost(u"https://h:port/"_s);
    client->sendGetRequest(client->url(kCurrentUserPath), requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1000"));
}

TEST_F(WholeAddressTest, isHowUsersCallTheServer)
{
    JAController::sharedInstance()->setHost(whole);
    EXPECT_EQ(client::serverName(), u"jira.example.test:8080/jira"_s);
    JAController::sharedInstance()->setHost(u"nothing"_s);
    EXPECT_EQ(client::serverName(), QString());
}

TEST_F(WholeAddressTest, isWhereEveryJobGoes)
{
    const qint64 id = server.addAttachment("ABC-1", {.fileName = "a.tessaloom", .bytes = "bytes"});
    logIn();
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    client->getCurrentUser(userCallBack());
    client->getIssueObject(u"ABC-1"_s, issueCallBack());
    ASSERT_TRUE(waitForEvents(4));
    client->uploadFileInIssue(writeFile("source", "content"), u"b.tessaloom"_s, u"ABC-1"_s, completionCallBack(), {});
    ASSERT_TRUE(waitForEvents(5));
    client->downloadFile(issue->attachments().at(0)->downloadLink(), downloadCallBack(), path("saved"));
    ASSERT_TRUE(waitForEvents(6));
    EXPECT_THAT(events, UnorderedElementsAre("valid", "session, no error", "user, no error", "issue, no error",
                                             "no error", "(100, 100, no error, YES)"));
    EXPECT_EQ(tests::contentsOf(path("saved")), QByteArray("bytes"));
    EXPECT_EQ(server.lastRequest().target, "/jira/secure/attachment/" + std::to_string(id) + "/a.tessaloom");
    events.clear();
    client->logout(completionCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("invalid", "no error"));
    ASSERT_EQ(server.requests().size(), 6U);
    for (const auto& request : server.requests()) {
        EXPECT_THAT(request.target, testing::StartsWith("/jira/")) << request.target;
        EXPECT_EQ(request.header("Host"), "jira.example.test:8080");
        // Once, though the jar has it too, for the path.
        EXPECT_THAT(request.header("Cookie"), testing::ContainsRegex("JSESSIONID=")) << request.target;
        EXPECT_EQ(QByteArray::fromStdString(request.header("Cookie")).count("JSESSIONID="), 1) << request.target;
    }
}

TEST_F(WholeAddressTest, keepsTheSessionFromTheServerNextDoor)
{
    logIn();
    client->setHost(u"http://jira.example.test:8080/other"_s);
    ASSERT_TRUE(records::savedLogin().synchronize());
    const auto file = tests::contentsOf(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
                                        u"/userdefaults.json"_s);
    EXPECT_EQ(file, QByteArray(R"({"jiraUrl":"http://jira.example.test:8080/other"})"));
}

/// Both choices at once.
class TokenAtWholeAddressTest : public tests::TokenTest, public testing::WithParamInterface<tests::TokenKind>
{
protected:
    TokenAtWholeAddressTest()
        : TokenTest({.contextPath = "/jira"})
    {
        TLJiraOptions::use({.address = TLJiraOptions::Address::Whole, .signIn = TLJiraOptions::SignIn::Token});
        client->setHost(whole);
    }
};

INSTANTIATE_TEST_SUITE_P(Both, TokenAtWholeAddressTest, testing::Values(tests::apiToken(), tests::accessToken()),
                         testing::PrintToStringParamName());

TEST_P(TokenAtWholeAddressTest, belongsToItsPort)
{
    signIn(GetParam());
    EXPECT_EQ(onDisk(), saved(whole, u"http://jira.example.test:8080"_s, GetParam()));
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(server.lastRequest().header("Authorization"), GetParam().authorization);
    client->downloadFile(u"http://jira.example.test/jira/secure/attachment/1/x"_s, downloadCallBack(), path("saved"));
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(server.lastRequest().header("Host"), "jira.example.test");
    EXPECT_EQ(server.lastRequest().headerCount("Authorization"), 0);
}

} // namespace
