#include "tests/cli/CommandTest.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using tests::words;

class WhoamiCommand : public tests::CommandTest
{
};

Fault answer(const std::string& json)
{
    return Fault().status(200, json, "application/json");
}

TEST_F(WhoamiCommand, showsTheUser)
{
    logIn();
    server.misbehave(Match::next(),
                     answer(R"({"name":"anna","displayName":"Anna\u001b[2J Ädams","timeZone":"Europe/Berlin",)"
                            R"("avatarUrls":{"48x48":"http://h/48"}})"));
    EXPECT_EQ(run(words("whoami")), Result({0,
                                            "name          anna\n"
                                            "display name  Anna?[2J Ädams\n"
                                            "time zone     Europe/Berlin\n"
                                            "picture       http://h/48\n",
                                            {}}));
}

TEST_F(WhoamiCommand, printsOneJSONObject)
{
    logIn();
    const Result result = run(words("--json whoami"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    const QJsonObject user = QJsonDocument::fromJson(result.output).object();
    EXPECT_EQ(user.keys(),
              (QStringList{u"avatarUrl"_s, u"displayName"_s, u"email"_s, u"key"_s, u"name"_s, u"timeZone"_s}));
    EXPECT_EQ(user.value(u"name"_s), u"anna"_s);
    EXPECT_EQ(user.value(u"displayName"_s), u"Anna Lindqvist"_s);
    EXPECT_EQ(user.value(u"email"_s), u"anna@example.test"_s);
}

TEST_F(WhoamiCommand, failsWhenTheAnswerNamesNobody)
{
    logIn();
    for (const char* body : {"<html>Log in</html>", "[]", "{", "{}", R"({"name":7,"displayName":[],"key":null})"}) {
        server.misbehave(Match::next(), answer(body));
        EXPECT_EQ(run(words("whoami --json")), Result({1, {}, "The server’s answer names no user.\n"})) << body;
    }
}

TEST_F(WhoamiCommand, failsWithTheTransportsError)
{
    logIn();
    tests::ToolRun refused(words("--connect-to jira.example.test:80:127.0.0.1:1 whoami"), environment, path({}));
    EXPECT_EQ(refused.status(), 1);
    EXPECT_EQ(refused.error(), "Could not connect to the server.\n");
    EXPECT_EQ(refused.output(), "");
}

} // namespace
