#include "platform/foundation/values/JSON.h"

#include "tests/kit/Printers.h"

#include <QJsonArray>

#include <gtest/gtest.h>

#include <limits>

namespace {

using tljira::decodeJSON;

TEST(JSON, objectsAndArrays)
{
    EXPECT_EQ(decodeJSON("{\"a\":[1,true,null]}"),
              QJsonValue(QJsonObject{{QStringLiteral("a"), QJsonArray{1, true, QJsonValue(QJsonValue::Null)}}}));
    EXPECT_EQ(decodeJSON(" \r\n\t[] \n"), QJsonValue(QJsonArray()));
    EXPECT_EQ(decodeJSON("{}"), QJsonValue(QJsonObject()));
}

TEST(JSON, scalarsAtTheTopLevel)
{
    EXPECT_EQ(decodeJSON("\"text\""), QJsonValue(QStringLiteral("text")));
    EXPECT_EQ(decodeJSON(" 12 "), QJsonValue(12));
    EXPECT_EQ(decodeJSON("-0.5"), QJsonValue(-0.5));
    EXPECT_EQ(decodeJSON("true"), QJsonValue(true));
    EXPECT_EQ(decodeJSON("false"), QJsonValue(false));
    EXPECT_EQ(decodeJSON("null"), QJsonValue(QJsonValue::Null));
    EXPECT_EQ(decodeJSON("\"],[\""), QJsonValue(QStringLiteral("],[")));
}

class Refused : public testing::TestWithParam<const char*>
{
};

TEST_P(Refused, isNoJSON)
{
    EXPECT_EQ(decodeJSON(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(All, Refused,
                         testing::Values("", " \n", "{", "[1", "{\"a\":}", "nul", "NaN", "[NaN]", "Infinity", "-",
                                         "1,2", "1],[2", "1]", "]", ",", "1,", "1 2", "\"a\" \"b\"", "\"a", "{} x",
                                         "[] []", "[1]]", "{}{}", "<html>", "'a'", "// x\n1", "01", "\"\xff\"",
                                         "[\"\xc3\"]", "\xff", "\xef\xbb\xbf", "[1]\xff"));

TEST(JSON, aByteOrderMarkIsPassedOver)
{
    EXPECT_EQ(decodeJSON("\xef\xbb\xbf{\"a\":1}"), QJsonValue(QJsonObject{{QStringLiteral("a"), 1}}));
    EXPECT_EQ(decodeJSON("\xef\xbb\xbf\"t\""), QJsonValue(QStringLiteral("t")));
}

TEST(JSON, aBytesOfZeroIsNoBlank)
{
    EXPECT_EQ(decodeJSON(QByteArray("{}\0", 3)), std::nullopt);
    EXPECT_EQ(decodeJSON(QByteArray("1\0", 2)), std::nullopt);
    EXPECT_EQ(decodeJSON(QByteArray("\0{}", 3)), std::nullopt);
}

TEST(JSON, integersKeep64Bits)
{
    const auto largest = decodeJSON("9223372036854775807");
    ASSERT_TRUE(largest);
    EXPECT_EQ(largest->toInteger(), std::numeric_limits<qint64>::max());
    const auto smallest = decodeJSON("[-9223372036854775808, 9007199254740993]");
    ASSERT_TRUE(smallest);
    EXPECT_EQ((*smallest)[0].toInteger(), std::numeric_limits<qint64>::min());
    EXPECT_EQ((*smallest)[1].toInteger(), 9007199254740993);
}

TEST(JSON, textsOutsideLatin)
{
    EXPECT_EQ(decodeJSON("\"\xe2\x82\xac \\ud83d\\ude00\""), QJsonValue(QStringLiteral("\u20ac \U0001F600")));
}

TEST(JSON, deepNestingIsRefusedNotFollowed)
{
    constexpr qsizetype levels = 100000;
    EXPECT_EQ(decodeJSON(QByteArray(levels, '[')), std::nullopt);
    EXPECT_EQ(decodeJSON(QByteArray(levels, '[') + QByteArray(levels, ']')), std::nullopt);
    EXPECT_EQ(decodeJSON(QByteArray("{\"a\":").repeated(levels)), std::nullopt);
    EXPECT_TRUE(decodeJSON(QByteArray(100, '[') + QByteArray(100, ']')));
}

TEST(JSON, encodesWithoutBlanks)
{
    const QJsonObject object{{QStringLiteral("b"), QJsonArray{1, QStringLiteral("\u20ac\"")}},
                             {QStringLiteral("a"), true}};
    EXPECT_EQ(tljira::encodeJSON(object), QByteArray("{\"a\":true,\"b\":[1,\"\xe2\x82\xac\\\"\"]}"));
    EXPECT_EQ(tljira::encodeJSON({}), QByteArray("{}"));
}

TEST(JSON, whatIsEncodedIsDecodedAgain)
{
    const QJsonObject object{{QStringLiteral("n"), std::numeric_limits<qint64>::max()},
                             {QStringLiteral("control"), QStringLiteral("\u0001\n\\")}};
    EXPECT_EQ(decodeJSON(tljira::encodeJSON(object)), QJsonValue(object));
}

} // namespace
