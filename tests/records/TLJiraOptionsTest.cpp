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

} // namespace
