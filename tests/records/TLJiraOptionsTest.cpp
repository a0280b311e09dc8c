#include "records/TLJiraOptions.h"

#include <gtest/gtest.h>

namespace {

TEST(TLJiraOptions, areTheDescribedOnesUntilOthersAreChosen)
{
    const TLJiraOptions untouched = TLJiraOptions::inUse();
    EXPECT_EQ(untouched.address, TLJiraOptions::Address::SchemeAndHost);
    EXPECT_EQ(untouched.signIn, TLJiraOptions::SignIn::Password);
    EXPECT_EQ(untouched.documents, (std::vector<TLJiraOptions::DocumentKind>{
                                       {QStringLiteral("tessaloom"), QStringLiteral("tessaloompacket")}}));
    EXPECT_EQ(untouched.log, TLJiraOptions::Log::on(TLJiraOptions::Log::Secrets::Shown));
    EXPECT_EQ(untouched.routes, QStringList());
    EXPECT_EQ(untouched.userAgent, QString());
    EXPECT_EQ(untouched.proxy, std::nullopt);
    EXPECT_EQ(untouched.authorities, (TLJiraOptions::Authorities{QString(), false}));
    EXPECT_EQ(untouched, TLJiraOptions());
}

TEST(TLJiraOptions, areChosenWithOneCall)
{
    TLJiraOptions::use({.address = TLJiraOptions::Address::Whole, .signIn = TLJiraOptions::SignIn::Token});
    EXPECT_EQ(TLJiraOptions::inUse().address, TLJiraOptions::Address::Whole);
    EXPECT_EQ(TLJiraOptions::inUse().signIn, TLJiraOptions::SignIn::Token);
    TLJiraOptions::use({.address = TLJiraOptions::Address::Whole});
    EXPECT_EQ(TLJiraOptions::inUse().signIn, TLJiraOptions::SignIn::Password);
    TLJiraOptions::use({});
    EXPECT_EQ(TLJiraOptions::inUse(), TLJiraOptions());
}

TEST(TLJiraOptions, takeExtensionsWithAPointInFront)
{
    TLJiraOptions::use({.documents = {{QStringLiteral(".odt"), QStringLiteral(".odtzip")}}});
    EXPECT_EQ(TLJiraOptions::inUse().documents,
              (std::vector<TLJiraOptions::DocumentKind>{{QStringLiteral("odt"), QStringLiteral("odtzip")}}));
    TLJiraOptions::use({});
    EXPECT_EQ(TLJiraOptions::inUse().documents, TLJiraOptions::defaultDocuments());
}

using Log = TLJiraOptions::Log;

TEST(TLJiraOptions, areTheSameWithLogsOfTheSameKind)
{
    const Log all[] = {Log(), Log::on(), Log::off(), Log::to([](const QString&) {}),
                       Log::to([](const QString&) {}, Log::Secrets::Shown)};
    for (const Log& one : all) {
        for (const Log& other : all)
            EXPECT_EQ(one == other, &one == &other);
    }
    EXPECT_EQ(Log(), Log::on(Log::Secrets::Shown));
    EXPECT_EQ(Log::to({}), Log::off());
}

TEST(TLJiraOptions, areTheSameWithCopiesOfOneLogFunction)
{
    const auto function = [](const QString&) {};
    const TLJiraOptions chosen{.log = Log::to(function)};
    const TLJiraOptions copy = chosen;
    EXPECT_EQ(copy, chosen);
    EXPECT_NE(chosen, TLJiraOptions{.log = Log::to(function)});
    TLJiraOptions::use(chosen);
    EXPECT_EQ(TLJiraOptions::inUse(), chosen);
    TLJiraOptions::use({});
}

TEST(TLJiraOptions, letGoOfALogFunctionWhenAnotherIsChosen)
{
    const auto held = std::make_shared<int>(0);
    TLJiraOptions::use({.log = Log::to([held](const QString&) {})});
    EXPECT_EQ(held.use_count(), 2);
    TLJiraOptions::use({});
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
