#include "records/SavedToken.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using records::SavedToken;

TEST(SavedToken, isNoneWithoutItsServerOrTheTokenItself)
{
    for (const SavedToken& half :
         {SavedToken{u""_s, u"anna"_s, u"1234"_s}, SavedToken{u"https://h:443"_s, u"anna"_s, u""_s}}) {
        records::saveToken(half);
        EXPECT_FALSE(records::savedToken().has_value()) << half.origin.toStdString();
    }
    records::saveToken({u"https://h:443"_s, u""_s, u"1234"_s});
    ASSERT_TRUE(records::savedToken().has_value());
    EXPECT_EQ(records::savedToken()->token, u"1234"_s);
}

} // namespace
