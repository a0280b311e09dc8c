#include "standin/ProgramOptions.h"

#include <gtest/gtest.h>

namespace {

using namespace standin;

ProgramOptions parse(const std::vector<const char*>& arguments)
{
    QStringList list{QStringLiteral("tljira-standin")};
    for (const char* argument : arguments)
        list.append(QString::fromUtf8(argument));
    return ProgramOptions::parse(list);
}

TEST(ProgramOptions, haveDefaultsForADemonstration)
{
    const auto options = parse({});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.server.port, 0);
    EXPECT_EQ(options.server.storage, Storage::keep);
    ASSERT_EQ(options.users.size(), 1U);
    EXPECT_EQ(options.users[0].name, "demo");
    EXPECT_EQ(options.users[0].password, "demo");
    EXPECT_EQ(options.issues, (std::vector<std::string>{"DEMO-1"}));
}

TEST(ProgramOptions, readTheServer)
{
    const auto options = parse({"--port", "8080", "--base", "http://h/jira", "--sink", "--tls", "expired",
                                "--maximum-size", "11M", "--certificate", "c.pem", "--verbose"});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.server.port, 8080);
    EXPECT_EQ(options.server.baseUrl, "http://h/jira");
    EXPECT_EQ(options.server.storage, Storage::sink);
    EXPECT_EQ(options.server.digest, Digest::none);
    EXPECT_EQ(options.server.tls, Tls::expired);
    EXPECT_EQ(options.server.maximumFileSize, 11 << 20);
    EXPECT_EQ(options.certificateFile, "c.pem");
    EXPECT_TRUE(options.isVerbose);
}

TEST(ProgramOptions, readHowUsersSignIn)
{
    const auto options = parse({"--cloud", "--contents-base", "http://localhost:1", "--context-path", "/jira", "--user",
                                "anna:a", "--api-token", "anna:b:c", "--access-token", "anna:d"});
    EXPECT_EQ(options.error, "");
    EXPECT_TRUE(options.server.isCloud);
    EXPECT_EQ(options.server.contentsBase, "http://localhost:1");
    EXPECT_EQ(options.server.contextPath, "/jira");
    ASSERT_EQ(options.users.size(), 1U);
    EXPECT_EQ(options.users[0].apiToken, "b:c");
    EXPECT_EQ(options.users[0].accessToken, "d");
    EXPECT_EQ(parse({"--api-token", "demo:x"}).users.at(0).apiToken, "x");
    EXPECT_EQ(parse({"--api-token", "bob:x"}).error, "There is no user 'bob' for a token.");
    EXPECT_EQ(parse({"--access-token", "demo"}).error, "'demo' is not NAME:TOKEN.");
    EXPECT_EQ(parse({"--context-path", "jira"}).error, "'jira' does not begin with a slash.");
}

TEST(ProgramOptions, readUsersIssuesAndFiles)
{
    const auto options = parse({"--user", "anna:a:b", "--user", "bob:", "--issue", "A-1", "--attach", "A-1:/tmp/x:y",
                                "--synthetic", "B-2:a:b.bin:4G", "--synthetic", "B-2:c:5"});
    EXPECT_EQ(options.error, "");
    ASSERT_EQ(options.users.size(), 2U);
    EXPECT_EQ(options.users[0].password, "a:b");
    EXPECT_EQ(options.users[1].password, "");
    EXPECT_EQ(options.issues, (std::vector<std::string>{"A-1", "B-2"}));
    ASSERT_EQ(options.files.size(), 1U);
    EXPECT_EQ(options.files[0].path, "/tmp/x:y");
    ASSERT_EQ(options.synthetics.size(), 2U);
    EXPECT_EQ(options.synthetics[0].fileName, "a:b.bin");
    EXPECT_EQ(options.synthetics[0].size, std::int64_t{4} << 30);
    EXPECT_EQ(options.synthetics[1].size, 5);
}

TEST(ProgramOptions, readFaults)
{
    const auto options = parse({"--fault", "/a=status:500", "--fault", "/b=early"});
    ASSERT_EQ(options.faults.size(), 2U);
    EXPECT_EQ(options.faults[0].match.path, "/a");
    EXPECT_TRUE(options.faults[1].fault.answersBeforeBody());
}

TEST(ProgramOptions, sayWhatCannotBeUnderstood)
{
    EXPECT_EQ(parse({"--nonsense"}).error, "Unknown option 'nonsense'.");
    EXPECT_EQ(parse({"extra"}).error, "Unexpected argument 'extra'.");
    EXPECT_EQ(parse({"--port", "70000"}).error, "'70000' is no port.");
    EXPECT_EQ(parse({"--user", "anna"}).error, "'anna' is not NAME:PASSWORD.");
    EXPECT_EQ(parse({"--attach", "A-1"}).error, "'A-1' is not KEY:FILE.");
    EXPECT_EQ(parse({"--synthetic", "A-1:b:x"}).error, "'A-1:b:x' is not KEY:NAME:SIZE.");
    EXPECT_EQ(parse({"--synthetic", "A-1:5"}).error, "'A-1:5' is not KEY:NAME:SIZE.");
    EXPECT_EQ(parse({"--fault", "x"}).error, "'x' is no fault.");
    EXPECT_EQ(parse({"--tls", "x"}).error, "'x' is no kind of certificate.");
    EXPECT_EQ(parse({"--maximum-size", "-1"}).error, "'-1' is no size.");
}

TEST(ProgramOptions, helpIsAskedForBothWays)
{
    EXPECT_TRUE(parse({"--help"}).wantsHelp);
    EXPECT_TRUE(parse({"-h"}).wantsHelp);
    EXPECT_FALSE(parse({}).wantsHelp);
    EXPECT_TRUE(ProgramOptions::help().contains(QStringLiteral("--synthetic")));
}

} // namespace
