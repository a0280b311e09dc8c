#include "cli/ServerAddress.h"

#include "client/JAController.h"
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

TEST(ServerAddress, refusesAnotherPortSinceItWouldBeDropped)
{
    EXPECT_EQ(problemOfServerAddress(u"https://jira.example.com:8443/"_s),
              u"The server’s address cannot have a port: use --connect-to jira.example.com:443:ADDR:PORT."_s);
    EXPECT_EQ(problemOfServerAddress(u"http://localhost:8080"_s),
              u"The server’s address cannot have a port: use --connect-to localhost:80:ADDR:PORT."_s);
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
