#include "platform/foundation/values/Match.h"

#include <gtest/gtest.h>

#include <new>

namespace {

using namespace Qt::StringLiterals;
using tljira::match;

const QRegularExpression word(u"a+b"_s);

TEST(Match, isTheFirstOneBehindAnOffset)
{
    EXPECT_EQ(match(word, u"-ab-aab"_s).capturedStart(), 1);
    EXPECT_EQ(match(word, u"-ab-aab"_s, 3).capturedStart(), 4);
    EXPECT_FALSE(match(word, u"-ab-aab"_s, 7).hasMatch());
    EXPECT_FALSE(match(word, QString()).hasMatch());
}

TEST(Match, isNoneInHalfACharacter)
{
    EXPECT_FALSE(match(word, u"ab"_s + QChar(0xD800)).hasMatch());
}

TEST(Match, thatCannotBeLookedForIsNotTakenForNone)
{
    const QString text = u"ab"_s.repeated(2000000) + u'c';
    EXPECT_THROW(match(QRegularExpression(u"(?:a|b)*c"_s), text), std::bad_alloc);
    EXPECT_TRUE(match(QRegularExpression(u"(?:a|b)*+c"_s), text).hasMatch());
}

} // namespace
