#include "records/JSONReading.h"
#include "tests/records/Json.h"
#include "tests/kit/Printers.h"

#include <limits>

namespace {

QJsonValue value(const char* json)
{
    return tests::object(QByteArray(R"({"v": )") + json + "}").value(u"v");
}

TEST(JSONReading, onlyATextIsAText)
{
    EXPECT_EQ(records::text(value(R"("abc")")), QStringLiteral("abc"));
    EXPECT_EQ(records::text(value(R"("")")), QString());
    for (const QJsonValue& other : tests::valuesOfEveryType)
        EXPECT_EQ(records::text(other).has_value(), other.isString());
    EXPECT_EQ(records::text(QJsonValue(QJsonValue::Undefined)), std::nullopt);
}

TEST(JSONReading, aNumberIsReadAsItsDigitsWhereItMayStandForAText)
{
    EXPECT_EQ(records::textOrNumber(value("10013")), QStringLiteral("10013"));
    EXPECT_EQ(records::textOrNumber(value("9007199254740993")), QStringLiteral("9007199254740993"));
    EXPECT_EQ(records::textOrNumber(value(R"("10013")")), QStringLiteral("10013"));
    for (const QJsonValue& other : tests::valuesOfEveryType)
        EXPECT_EQ(records::textOrNumber(other).has_value(), other.isString() || other.isDouble());
}

TEST(JSONReading, integersKeepSixtyFourBits)
{
    EXPECT_EQ(records::integer(value("2048")), 2048);
    EXPECT_EQ(records::integer(value("-1")), -1);
    EXPECT_EQ(records::integer(value("9007199254740993")), 9007199254740993);
    EXPECT_EQ(records::integer(value("9223372036854775807")), std::numeric_limits<qint64>::max());
    EXPECT_EQ(records::integer(value("-9223372036854775808")), std::numeric_limits<qint64>::lowest());
}

TEST(JSONReading, integersLoseTheirFraction)
{
    EXPECT_EQ(records::integer(value("2048.9")), 2048);
    EXPECT_EQ(records::integer(value("-2048.9")), -2048);
    EXPECT_EQ(records::integer(value("1e3")), 1000);
}

TEST(JSONReading, numbersBeyondSixtyFourBitsGiveTheLowestInteger)
{
    EXPECT_EQ(records::integer(value("1e300")), std::numeric_limits<qint64>::lowest());
    EXPECT_EQ(records::integer(value("-1e300")), std::numeric_limits<qint64>::lowest());
    EXPECT_EQ(records::integer(value("9223372036854775808")), std::numeric_limits<qint64>::lowest());
}

TEST(JSONReading, onlyANumberIsAnInteger)
{
    for (const QJsonValue& other : tests::valuesOfEveryType) {
        EXPECT_EQ(records::integer(other), other.isDouble() ? 7 : 0);
    }
    EXPECT_EQ(records::integer(QJsonValue(QStringLiteral("2048"))), 0);
}

} // namespace
