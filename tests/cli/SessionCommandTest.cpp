#include "tests/cli/CommandTest.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using tests::words;

class SessionCommand : public tests::CommandTest
{
};

Fault answer(const std::string& json)
{
    return Fault().status(200, json, "application/json");
}

TEST_F(SessionCommand, showsWhatTheServerSays)
{
    logIn();
    server.misbehave(Match::next(), answer(R"({"loginInfo":{"loginCount":12,"failedLoginCount":3,)"
                                           R"("lastFailedLoginTime":"yesterday","previousLoginTime":"today"}})"));
    EXPECT_EQ(run(words("session")), Result({0,
                                             "server             http://jira.example.test/\n"
                                             "logins             12\n"
                                             "failed logins      3\n"
                                             "previous login     today\n"
                                             "last failed login  yesterday\n",
                                             {}}));
}

TEST_F(SessionCommand, printsOneJSONObject)
{
    logIn();
    const Result result = run(words("session --json"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    const QJsonObject expected = {{u"valid"_s, true},
                                  {u"server"_s, u"http://jira.example.test/"_s},
                                  {u"loginCount"_s, 1},
                                  {u"failedLoginCount"_s, 0},
                                  {u"previousLoginTime"_s, QJsonValue()},
                                  {u"lastFailedLoginTime"_s, QJsonValue()}};
    EXPECT_EQ(QJsonDocument::fromJson(result.output).object(), expected);
}

TEST_F(SessionCommand, failsWhenTheSessionHasEnded)
{
    logIn();
    server.expireSessions();
    for (const char* command : {"session", "session --json"}) {
        EXPECT_EQ(run(words(command)),
                  Result({1, {}, "The operation couldn’t be completed. (invalid sessioin error 401.)\n"}));
    }
}

TEST_F(SessionCommand, failsWhenAPageForPeopleAnswers)
{
    logIn();
    server.misbehave(Match::on("*"), Fault().status(200, "<html>Log in</html>", "text/html"));
    EXPECT_EQ(run(words("session")), Result({1, {}, "The server’s answer names no user.\n"}));
}

TEST_F(SessionCommand, believesAnEmptyAnswerOfAServerThatKnowsTheUser)
{
    logIn();
    server.misbehave(Match::on("/rest/auth/1/session"), answer(R"({"name":"anna"})"));
    EXPECT_EQ(run(words("session")).status, 0);
}

TEST_F(SessionCommand, failsWithoutAServer)
{
    EXPECT_EQ(run(words("session")), Result({1, {}, "No server is set: use tljira login SERVER USER first.\n"}));
    EXPECT_EQ(server.requestCount(), 0U);
}

} // namespace
