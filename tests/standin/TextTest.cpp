#include "standin/Text.h"

#include <gtest/gtest.h>

namespace {

using namespace standin;

TEST(Text, comparesWithoutCaseButNotWithoutLength)
{
    EXPECT_TRUE(equalsIgnoringCase("Content-Type", "content-TYPE"));
    EXPECT_FALSE(equalsIgnoringCase("Cookie", "Cookie2"));
}

TEST(Text, trimsOuterBlanksOnly)
{
    EXPECT_EQ(trimmed("\t a b \t"), "a b");
    EXPECT_EQ(trimmed(" \t "), "");
}

TEST(Text, splitsIntoEveryPart)
{
    EXPECT_EQ(split("a;;b", ';'), (std::vector<std::string_view>{"a", "", "b"}));
    EXPECT_EQ(split("", ';'), (std::vector<std::string_view>{""}));
}

TEST(Text, decodesEscapesAndLeavesBrokenOnes)
{
    EXPECT_EQ(percentDecoded("a%20b%C3%A4"), "a bä");
    EXPECT_EQ(percentDecoded("100%"), "100%");
    EXPECT_EQ(percentDecoded("%2g+%2"), "%2g+%2");
}

TEST(Text, encodesAllButUnreservedCharacters)
{
    EXPECT_EQ(percentEncoded("a b/ä~.tess"), "a%20b%2F%C3%A4~.tess");
}

TEST(Text, matchesAStarWithAnyRunOfCharacters)
{
    EXPECT_TRUE(matchesPattern("*", ""));
    EXPECT_TRUE(matchesPattern("/a/*/c", "/a/b/x/c"));
    EXPECT_TRUE(matchesPattern("/a*", "/a"));
    EXPECT_TRUE(matchesPattern("*b*", "abc"));
    EXPECT_FALSE(matchesPattern("/a", "/a/b"));
    EXPECT_FALSE(matchesPattern("/a/*/c", "/a/b"));
    EXPECT_FALSE(matchesPattern("ab*ba", "aba"));
}

} // namespace
