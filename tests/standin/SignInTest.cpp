#include "tests/standin/JiraFixture.h"

#include <gmock/gmock.h>

namespace standin_tests {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

std::string basic(const std::string& pair)
{
    return "Authorization: Basic " + QByteArray::fromStdString(pair).toBase64().toStdString() + "\r\n";
}

class SignIn : public JiraFixture
{
protected:
    explicit SignIn(const standin::Options& options = {})
        : JiraFixture(options)
    {
        server.addUser({.name = "anna",
                        .password = "secret",
                        .email = "anna@example.test",
                        .apiToken = "api-1",
                        .accessToken = "access-1"});
        id = server.addAttachment("DEMO-1", {.fileName = "a b.txt", .bytes = "bytes"});
    }

    int statusWith(const std::string& headers) { return get("/rest/api/2/myself", headers).status; }

    std::int64_t id = 0;
};

TEST_F(SignIn, goesByNameOrEmailAndApiToken)
{
    EXPECT_EQ(statusWith(basic("anna:api-1")), 200);
    EXPECT_EQ(statusWith(basic("anna@example.test:api-1")), 200);
    EXPECT_EQ(statusWith(basic("anna:secret")), 200);
    for (const char* pair : {"anna:api-2", "anna:", "anna", "", ":api-1", "bob:api-1", "anna:access-1"})
        EXPECT_EQ(statusWith(basic(pair)), 401) << pair;
    EXPECT_EQ(statusWith("Authorization: Basic *\r\n"), 401);
    EXPECT_EQ(statusWith("Authorization: Basic\r\n"), 401);
}

TEST_F(SignIn, goesByAccessToken)
{
    EXPECT_EQ(statusWith("Authorization: Bearer access-1\r\n"), 200);
    EXPECT_EQ(statusWith("authorization: bearer  access-1\r\n"), 200);
    for (const char* token : {"access-2", "", "api-1", "access-1x"})
        EXPECT_EQ(statusWith("Authorization: Bearer " + std::string(token) + "\r\n"), 401) << token;
    EXPECT_EQ(statusWith("Authorization: Digest access-1\r\n"), 401);
}

TEST_F(SignIn, byATokenThatIsWrongIsNotSavedByACookie)
{
    EXPECT_EQ(statusWith("Authorization: Bearer access-2\r\n" + cookieOfAnna()), 401);
}

TEST_F(SignIn, byTokenBringsACookieThatNobodyAskedFor)
{
    const auto reply = get("/rest/api/2/myself", "Authorization: Bearer access-1\r\n");
    EXPECT_THAT(reply.header("Set-Cookie"), StartsWith("JSESSIONID="));
    EXPECT_EQ(getAsAnna("/rest/api/2/myself").header("Set-Cookie"), "");
}

TEST_F(SignIn, byTokenReachesIssuesAndFiles)
{
    EXPECT_EQ(get("/rest/api/2/issue/DEMO-1", basic("anna:api-1")).status, 200);
    EXPECT_EQ(get("/secure/attachment/" + std::to_string(id) + "/a%20b.txt", basic("anna:api-1")).body, "bytes");
    EXPECT_EQ(get("/secure/attachment/" + std::to_string(id) + "/a%20b.txt", basic("anna:api-2")).status, 302);
}

class SignInAtCloud : public SignIn
{
protected:
    SignInAtCloud()
        : SignIn({.isCloud = true, .contentsBase = "http://media.example.test/"})
    {
    }
};

TEST_F(SignInAtCloud, takesNoPasswordsAndNoCookies)
{
    const auto reply = login("anna", "secret");
    EXPECT_EQ(reply.status, 401);
    EXPECT_EQ(reply.header("Set-Cookie"), "");
    EXPECT_EQ(statusWith(cookieOfAnna()), 401);
    EXPECT_EQ(statusWith(basic("anna@example.test:secret")), 401);
}

TEST_F(SignInAtCloud, takesApiTokensWithEmailAddressesOnly)
{
    EXPECT_EQ(statusWith(basic("anna@example.test:api-1")), 200);
    EXPECT_EQ(statusWith(basic("anna:api-1")), 401);
    const auto reply = get("/rest/api/2/myself", "Authorization: Bearer access-1\r\n");
    EXPECT_EQ(reply.status, 403);
    EXPECT_EQ(reply.body, R"({"error":"Failed to parse Connect Session Auth Token"})");
}

TEST_F(SignInAtCloud, knowsUsersByTheirAccountID)
{
    const auto user = jsonObject(get("/rest/api/2/myself", basic("anna@example.test:api-1")));
    EXPECT_THAT(user[QStringLiteral("accountId")].toString().toStdString(), HasSubstr("anna"));
    EXPECT_FALSE(user.contains(QStringLiteral("name")));
    EXPECT_FALSE(user.contains(QStringLiteral("key")));
}

TEST_F(SignInAtCloud, leadsToContentsOfAnotherHost)
{
    const auto issue = jsonObject(get("/rest/api/2/issue/DEMO-1", basic("anna@example.test:api-1")));
    const auto shown = issue[QStringLiteral("fields")][QStringLiteral("attachment")][0].toObject();
    const std::string path = "/rest/api/2/attachment/content/" + std::to_string(id);
    EXPECT_EQ(shown[QStringLiteral("content")].toString().toStdString(), "http://jira.example.test" + path);
    EXPECT_EQ(get(path).status, 401);

    const auto reply = get(path, basic("anna@example.test:api-1"));
    EXPECT_EQ(reply.status, 303);
    const std::string start = "http://media.example.test";
    ASSERT_THAT(reply.header("Location"), StartsWith(start + "/media/a%20b.txt?ticket="));
    const std::string target = reply.header("Location").substr(start.size());
    EXPECT_EQ(get(target).body, "bytes");
    EXPECT_EQ(get(target, basic("anna@example.test:api-1")).status, 400);
    EXPECT_EQ(get(target, "Cookie: a=b\r\n").status, 400);
    EXPECT_EQ(get(target + "0").status, 403);
    EXPECT_EQ(get("/media/a%20b.txt").status, 403);
}

class ContextPath : public SignIn
{
protected:
    ContextPath()
        : SignIn({.contextPath = "/jira"})
    {
    }
};

TEST_F(ContextPath, isWhereResourcesLinksAndCookiesAre)
{
    const std::string body = R"({"username":"anna","password":"secret"})";
    const auto reply =
        exchange(requestBytes("POST", "/jira/rest/auth/1/session", "Content-Type: application/json\r\n", body));
    EXPECT_EQ(reply.status, 200);
    EXPECT_THAT(reply.header("Set-Cookie"), HasSubstr("; Path=/jira; HttpOnly"));
    EXPECT_THAT(reply.header("Set-Cookie"), HasSubstr("_lin; Path=/jira"));
    const auto user = jsonObject(getAsAnna("/jira/rest/api/2/myself"));
    EXPECT_THAT(user[QStringLiteral("self")].toString().toStdString(), StartsWith("http://jira.example.test/jira/"));
    EXPECT_EQ(getAsAnna("/rest/api/2/myself").status, 404);
    EXPECT_EQ(getAsAnna("/jirarest/api/2/myself").status, 404);
}

} // namespace

} // namespace standin_tests
