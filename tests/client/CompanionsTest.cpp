#include "client/Companions.h"

#include <gmock/gmock.h>

namespace {

using Pairs = client::Companions<int, const char>;

TEST(CompanionsTest, goAlongWithOneEachAsLongAsTheyLive)
{
    const int one = 1;
    const int other = 2;
    auto first = std::make_shared<const char>('a');
    const auto second = std::make_shared<const char>('b');
    EXPECT_EQ(Pairs::of(one), nullptr);
    Pairs::join(one, first);
    Pairs::join(other, second);
    EXPECT_EQ(Pairs::of(one), first);
    EXPECT_EQ(Pairs::of(other), second);

    first.reset();
    EXPECT_EQ(Pairs::of(one), nullptr);
    EXPECT_EQ(Pairs::of(other), second);
}

TEST(CompanionsTest, areReplacedByWhoJoinsLater)
{
    const int one = 1;
    const auto first = std::make_shared<const char>('a');
    const auto second = std::make_shared<const char>('b');
    Pairs::join(one, first);
    Pairs::join(one, second);
    EXPECT_EQ(Pairs::of(one), second);
}

} // namespace
