#include "tests/cli/CommandTest.h"

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using tests::words;

class LogoutCommand : public tests::CommandTest
{
};

TEST_F(LogoutCommand, EndsTheSessionAndForgetsTheServer)
{
    logIn();
    EXPECT_EQ(run(words("logout")), Result({0, {}, {}}));
    EXPECT_EQ(server.sessionCount(), 0U);
    EXPECT_EQ(run(words("whoami")), Result({1, {}, "No server is set: use tljira login SERVER USER first.\n"}));
}

TEST_F(LogoutCommand, FailsWithAnyOtherStatus)
{
    logIn();
    server.misbehave(Match::next(), Fault().status(200, "{}", "application/json"));
    EXPECT_EQ(run(words("logout")),
              Result({1, {}, "The operation couldn’t be completed. (invalid sessioin error 200.)\n"}));
}

TEST_F(LogoutCommand, TellsATransportFailureOnce)
{
    logIn();
    server.misbehave(Match::on("*"), Fault().close(Point::responseHead(0)));
    EXPECT_EQ(run(words("logout")), Result({1, {}, "The network connection was lost.\n"}));
    EXPECT_EQ(run(words("whoami")).error, "No server is set: use tljira login SERVER USER first.\n");
}

TEST_F(LogoutCommand, NeedsAServer)
{
    EXPECT_EQ(run(words("logout")), Result({1, {}, "No server is set: use tljira login SERVER USER first.\n"}));
}

} // namespace
