#include "host/HostOptions.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

using tessaloom::HostOptions;

namespace {

HostOptions parsed(const QStringList& arguments)
{
    return HostOptions::parse(QStringList(QStringLiteral("tessaloom")) + arguments);
}

TEST(HostOptions, takesADocument)
{
    EXPECT_EQ(parsed({QStringLiteral("plan.tessaloom")}).file, QStringLiteral("plan.tessaloom"));
}

TEST(HostOptions, takesAnyNumberOfRoutes)
{
    const QStringList routes{QStringLiteral("a.test:80:127.0.0.1:8080"), QStringLiteral("b.test:443:127.0.0.1:8443")};

    const HostOptions options = parsed({QStringLiteral("--connect-to"), routes.at(0), QStringLiteral("--connect-to"),
                                        routes.at(1), QStringLiteral("plan.tessaloom")});

    EXPECT_EQ(options.error, QString());
    EXPECT_EQ(options.routes, routes);
}

TEST(HostOptions, refusesWhatIsNoRoute)
{
    EXPECT_EQ(parsed({QStringLiteral("--connect-to"), QStringLiteral("8080")}).error,
              QStringLiteral("'8080' is not HOST:PORT:ADDR:PORT."));
}

TEST(HostOptions, chooseNothingByThemselves)
{
    EXPECT_EQ(parsed({QStringLiteral("plan.tessaloom")}).choices, TLJiraOptions());
}

TEST(HostOptions, chooseWhatUsersOfOtherServersNeed)
{
    EXPECT_EQ(parsed({QStringLiteral("--whole-address")}).choices.address, TLJiraOptions::Address::Whole);
    EXPECT_EQ(parsed({QStringLiteral("--token")}).choices.signIn, TLJiraOptions::SignIn::Token);
    EXPECT_EQ(parsed({QStringLiteral("--keyring")}).choices.secrets, TLJiraOptions::Secrets::Keyring);
}

TEST(HostOptions, takeAnyNumberOfExtensions)
{
    const std::vector<TLJiraOptions::DocumentKind> kinds{{QStringLiteral("odt")}, {QStringLiteral("ods")}};

    const HostOptions options = parsed(
        {QStringLiteral("--documents"), QStringLiteral("odt"), QStringLiteral("--documents"), QStringLiteral("ods")});

    EXPECT_EQ(options.choices.documents, kinds);
}

TEST(HostOptions, takeAllDocuments)
{
    EXPECT_TRUE(parsed({QStringLiteral("--documents"), QStringLiteral("odt"), QStringLiteral("--documents"),
                        QStringLiteral("all")})
                    .choices.documents.empty());
}

TEST(HostOptions, refusesASecondDocument)
{
    EXPECT_EQ(parsed({QStringLiteral("a"), QStringLiteral("b")}).error, QStringLiteral("Unexpected argument 'b'."));
}

TEST(HostOptions, refusesWhatItDoesNotKnow)
{
    EXPECT_EQ(parsed({QStringLiteral("--verbose")}).error, QStringLiteral("Unknown option 'verbose'."));
}

TEST(HostOptions, namesEveryOptionInItsHelp)
{
    for (const char* option :
         {"--connect-to", "--whole-address", "--token", "--keyring", "--documents", "--status", "--dark", "--help"})
        EXPECT_TRUE(HostOptions::help().contains(QLatin1String(option))) << option;
}

} // namespace
