#include "cli/ServerAddress.h"

#include "client/JAController.h"
#include "records/TLJiraOptions.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using cli::problemOfServerAddress;

TEST(ServerAddress, takesSchemeAndHost)
{
    EXPECT_EQ(problemOfServerAddress(u"https://jira.example.com"_s), std::nullopt);
    EXPECT_EQ(problemOfServerAddress(u"HTTP://jira.example.com/browse/ABC-1?x#y"_s), std::nullopt);
    EXPECT_EQ(problemOfServerAddress(u"http://[::1]/"_s), std::nullopt);
}

TEST(ServerAddress, takesThePortOfTheScheme)
{
    EXPECT_EQ(problemOfServerAddress(u"http://jira.example.com:80/"_s), std::nullopt);
    EXPECT_EQ(problemOfServerAddress(u"https://jira.example.com:443/"_s), std::nullopt);
}

TEST(ServerAddress, takesAnotherPortAndAPath)
{
    EXPECT_EQ(problemOfServerAddress(u"https://jira.example.com:8443/jira"_s), std::nullopt);
    EXPECT_EQ(problemOfServerAddress(u"http://[::1]:1"_s), std::nullopt);
    EXPECT_EQ(problemOfServerAddress(u"http://localhost:65535"_s), std::nullopt);
}

TEST(ServerAddress, refusesWhatIsNoPort)
{
    for (const QString& port : {u"0"_s, u"65536"_s, u"-1"_s, u"x"_s, u"+80"_s, u"80:90"_s}) {
        EXPECT_EQ(problemOfServerAddress(u"https://jira.example.com:%1/"_s.arg(port)),
                  u"“%1” is no port of a server, such as 8443."_s.arg(port));
    }
}

TEST(ServerAddress, hasAName)
{
    TLJiraOptions::use({.address = TLJiraOptions::Address::Whole});
    EXPECT_EQ(cli::serverName(u"https://jira.example.com/"_s), u"jira.example.com"_s);
    EXPECT_EQ(cli::serverName(u"https://jira.example.com:8443/jira/?x"_s), u"jira.example.com:8443/jira"_s);
    EXPECT_EQ(cli::serverName(u"nothing"_s), u"nothing"_s);
    TLJiraOptions::use({});
}

TEST(ServerAddress, refusesWhatNamesNoServer)
{
    for (const QString& address : {u""_s, u"jira.example.com"_s, u"jira.example.com:8443/x"_s, u"https://"_s,
                                   u"ftp://jira.example.com"_s, u"https://jira example.com"_s}) {
        EXPECT_EQ(problemOfServerAddress(address),
                  u"“%1” is no address of a server, such as https://jira.example.com."_s.arg(address));
    }
}

TEST(ServerAddress, knowsWhetherAServerIsSet)
{
    const auto client = JAController::init();
    EXPECT_FALSE(cli::hasServer(*client));
    client->setJiraHost(u"https://jira.example.com"_s);
    EXPECT_TRUE(cli::hasServer(*client));
    client->setJiraHost(std::nullopt);
    EXPECT_FALSE(cli::hasServer(*client));
}

} // namespace
