#include "tests/standin/JiraFixture.h"

#include <gmock/gmock.h>

namespace standin_tests {

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

class Sessions : public JiraFixture
{
};

TEST_F(Sessions, anAcceptedLoginSetsBothCookies)
{
    const auto reply = login("anna", "secret");
    EXPECT_EQ(reply.status, 200);
    const auto session = jsonObject(reply)[QStringLiteral("session")].toObject();
    const auto value = session[QStringLiteral("value")].toString().toStdString();
    EXPECT_EQ(session[QStringLiteral("name")].toString().toStdString(), "JSESSIONID");
    EXPECT_THAT(value, MatchesRegex("[0-9A-F]{32}"));
    EXPECT_THAT(reply.head, HasSubstr("\r\nSet-Cookie: JSESSIONID=" + value + "; Path=/; HttpOnly\r\n"));
    EXPECT_THAT(reply.header("Set-Cookie"), MatchesRegex(".*, atlassian.xsrf.token=[^;]+; Path=/"));
    EXPECT_EQ(reply.header("Content-Type"), "application/json;charset=UTF-8");
}

TEST_F(Sessions, theFirstLoginHasNoTimesYet)
{
    const auto info = jsonObject(login("anna", "secret"))[QStringLiteral("loginInfo")].toObject();
    EXPECT_EQ(info, (QJsonObject{{QStringLiteral("failedLoginCount"), 0}, {QStringLiteral("loginCount"), 1}}));
}

TEST_F(Sessions, laterLoginsTellCountsAndTimes)
{
    login("anna", "wrong");
    login("anna", "secret");
    const auto info = jsonObject(login("anna", "secret"))[QStringLiteral("loginInfo")].toObject();
    EXPECT_EQ(info[QStringLiteral("failedLoginCount")].toInt(), 1);
    EXPECT_EQ(info[QStringLiteral("loginCount")].toInt(), 2);
    const char* const time = "20..-..-..T..:..:..\\....\\+0000";
    EXPECT_THAT(info[QStringLiteral("lastFailedLoginTime")].toString().toStdString(), MatchesRegex(time));
    EXPECT_THAT(info[QStringLiteral("previousLoginTime")].toString().toStdString(), MatchesRegex(time));
}

TEST_F(Sessions, aWrongPasswordIsRefused)
{
    const auto reply = login("anna", "wrong");
    EXPECT_EQ(reply.status, 401);
    EXPECT_EQ(reply.body, R"({"errorMessages":["Login failed"],"errors":{}})");
    EXPECT_EQ(reply.header("Set-Cookie"), "");
    EXPECT_EQ(login("nobody", "secret").status, 401);
}

TEST_F(Sessions, tooManyTriesAskForACaptcha)
{
    for (int attempt = 0; attempt < 3; ++attempt)
        EXPECT_EQ(login("anna", "wrong").status, 401);
    const auto reply = login("anna", "secret");
    EXPECT_EQ(reply.status, 403);
    EXPECT_EQ(reply.body, R"({"errorMessages":["Login denied"],"errors":{}})");
    EXPECT_EQ(reply.header("X-Authentication-Denied-Reason"),
              "CAPTCHA_CHALLENGE; login-url=http://jira.example.test/login.jsp");
    EXPECT_EQ(reply.header("X-Seraph-LoginReason"), "AUTHENTICATION_DENIED");
}

TEST_F(Sessions, aGoodLoginStartsTheCountOfTriesAnew)
{
    login("anna", "wrong");
    login("anna", "wrong");
    EXPECT_EQ(login("anna", "secret").status, 200);
    login("anna", "wrong");
    EXPECT_EQ(login("anna", "secret").status, 200);
}

TEST_F(Sessions, aCaptchaCanBeRequiredAndSolved)
{
    server.requireCaptcha("anna");
    EXPECT_EQ(login("anna", "secret").status, 403);
    server.requireCaptcha("anna", false);
    EXPECT_EQ(login("anna", "secret").status, 200);
}

TEST_F(Sessions, otherResourcesAnswerACaptchaInHtml)
{
    server.requireCaptcha("anna");
    const auto reply = getAsAnna("/rest/api/2/myself");
    EXPECT_EQ(reply.status, 403);
    EXPECT_EQ(reply.header("Content-Type"), "text/html;charset=UTF-8");
    EXPECT_THAT(reply.header("X-Authentication-Denied-Reason"), HasSubstr("CAPTCHA_CHALLENGE"));
}

TEST_F(Sessions, aLoginHasToBeJson)
{
    EXPECT_EQ(exchange(requestBytes("POST", sessionPath, "Content-Type: text/plain\r\n", "{}")).status, 415);
    EXPECT_EQ(exchange(requestBytes("POST", sessionPath, "Content-Type: application/json\r\n", "{")).status, 400);
    EXPECT_EQ(exchange(requestBytes("POST", sessionPath, "Content-Type: application/json\r\n", "[1]")).status, 400);
}

TEST_F(Sessions, aSessionIsShownWithoutASessionObject)
{
    login("anna", "secret");
    const auto reply = getAsAnna(sessionPath);
    EXPECT_EQ(reply.status, 200);
    const auto shown = jsonObject(reply);
    EXPECT_EQ(shown.keys(), (QStringList{QStringLiteral("loginInfo"), QStringLiteral("name"), QStringLiteral("self")}));
    EXPECT_EQ(shown[QStringLiteral("name")].toString().toStdString(), "anna");
    EXPECT_EQ(shown[QStringLiteral("self")].toString().toStdString(),
              "http://jira.example.test/rest/api/latest/user?username=anna");
    EXPECT_EQ(shown[QStringLiteral("loginInfo")].toObject()[QStringLiteral("loginCount")].toInt(), 1);
}

TEST_F(Sessions, withoutALoginThereIsNoSession)
{
    const auto reply = get(sessionPath);
    EXPECT_EQ(reply.status, 401);
    EXPECT_EQ(reply.header("Content-Type"), "application/json;charset=UTF-8");
    EXPECT_NE(firstError(reply), "");
}

TEST_F(Sessions, loggingOutEndsTheSession)
{
    const auto cookie = cookieOfAnna();
    const auto reply = exchange(requestBytes("DELETE", sessionPath, cookie));
    EXPECT_EQ(reply.status, 204);
    EXPECT_EQ(reply.body, "");
    EXPECT_EQ(reply.header("Content-Length"), "");
    EXPECT_EQ(server.sessionCount(), 0U);
    EXPECT_EQ(get(sessionPath, cookie).status, 401);
}

TEST_F(Sessions, loggingOutNeedsALogin)
{
    EXPECT_EQ(exchange(requestBytes("DELETE", sessionPath)).status, 401);
}

TEST_F(Sessions, loggingOutLeavesOtherSessionsAlone)
{
    const auto other = cookieOfAnna();
    exchange(requestBytes("DELETE", sessionPath, cookieOfAnna()));
    EXPECT_EQ(get(sessionPath, other).status, 200);
}

TEST_F(Sessions, ofSeveralSessionCookiesAnyGoodOneCounts)
{
    const auto good = server.openSession("anna");
    EXPECT_EQ(get(sessionPath, "Cookie: JSESSIONID=stale; x=y; JSESSIONID=" + good + "\r\n").status, 200);
    EXPECT_EQ(get(sessionPath, "Cookie: JSESSIONID=" + good + "; JSESSIONID=stale\r\n").status, 200);
    EXPECT_EQ(get(sessionPath, "Cookie: JSESSIONID=stale\r\nCookie: JSESSIONID=" + good + "\r\n").status, 200);
    EXPECT_EQ(get(sessionPath, "Cookie: XJSESSIONID=" + good + "\r\n").status, 401);
}

TEST_F(Sessions, aStaleCookieIsRefusedEverywhere)
{
    const auto cookie = cookieOfAnna();
    server.expireSessions();
    for (const char* path : {sessionPath, "/rest/api/2/myself", "/rest/api/2/issue/DEMO-1"}) {
        const auto reply = get(path, cookie);
        EXPECT_EQ(reply.status, 401) << path;
        EXPECT_EQ(reply.header("Content-Type"), "application/json;charset=UTF-8") << path;
    }
    const auto upload = requestBytes("POST", attachmentsPath, cookie + "X-Atlassian-Token: nocheck\r\n" + formType,
                                     formBody("name=file; filename=a", "x"));
    EXPECT_EQ(exchange(upload).status, 401);
    EXPECT_TRUE(server.attachments("DEMO-1").empty());
}

TEST_F(Sessions, aStaleCookieDoesNotKeepFromLoggingIn)
{
    const auto body = R"({"username":"anna","password":"secret"})";
    const auto headers = "Cookie: JSESSIONID=stale\r\nContent-Type: application/json\r\n";
    EXPECT_EQ(exchange(requestBytes("POST", sessionPath, headers, body)).status, 200);
}

class SessionsWithOptions : public JiraFixture
{
protected:
    SessionsWithOptions()
        : JiraFixture({.triesBeforeCaptcha = 1, .htmlWhenStale = true, .emailAddresses = false, .loginTimes = false})
    {
    }
};

TEST_F(SessionsWithOptions, aStaleCookieIsRefusedInHtml)
{
    const auto reply = get(sessionPath, "Cookie: JSESSIONID=stale\r\n");
    EXPECT_EQ(reply.status, 401);
    EXPECT_EQ(reply.header("Content-Type"), "text/html;charset=UTF-8");
    EXPECT_EQ(get(sessionPath).header("Content-Type"), "application/json;charset=UTF-8");
}

TEST_F(SessionsWithOptions, loginsCanLeaveTheTimesOut)
{
    login("anna", "secret");
    const auto info = jsonObject(login("anna", "secret"))[QStringLiteral("loginInfo")].toObject();
    EXPECT_EQ(info.keys(), (QStringList{QStringLiteral("failedLoginCount"), QStringLiteral("loginCount")}));
}

TEST_F(SessionsWithOptions, aCaptchaComesAfterAsManyTriesAsAsked)
{
    EXPECT_EQ(login("anna", "wrong").status, 401);
    EXPECT_EQ(login("anna", "secret").status, 403);
}

TEST_F(SessionsWithOptions, usersCanBeShownWithoutTheirAddress)
{
    EXPECT_FALSE(jsonObject(getAsAnna("/rest/api/2/myself")).contains(QStringLiteral("emailAddress")));
}

} // namespace

} // namespace standin_tests
