#include "platform/foundation/values/Format.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace {

using tljira::describe;
using tljira::format;

QString formatted(const char16_t* text, const auto&... arguments)
{
    return format(QString::fromUtf16(text), arguments...);
}

TEST(Format, textAndItsAbsence)
{
    EXPECT_EQ(formatted(u"a %@ b", QStringLiteral("x")), QStringLiteral("a x b"));
    EXPECT_EQ(formatted(u"%@", QString()), QString());
    EXPECT_EQ(formatted(u"%@", std::nullopt), QStringLiteral("(null)"));
    EXPECT_EQ(formatted(u"%@", std::optional<QString>()), QStringLiteral("(null)"));
    EXPECT_EQ(formatted(u"%@", std::optional(QStringLiteral("x"))), QStringLiteral("x"));
    EXPECT_EQ(formatted(u"%@://%@/", std::optional(QStringLiteral("https")), std::optional<QString>()),
              QStringLiteral("https://(null)/"));
}

TEST(Format, jsonValues)
{
    EXPECT_EQ(formatted(u"%@", QJsonValue(QJsonValue::Null)), QStringLiteral("<null>"));
    EXPECT_EQ(formatted(u"%@", QJsonValue(QJsonValue::Undefined)), QStringLiteral("(null)"));
    EXPECT_EQ(formatted(u"%@ %@", QJsonValue(true), QJsonValue(false)), QStringLiteral("1 0"));
    EXPECT_EQ(formatted(u"%@", QJsonValue(QStringLiteral("a \"b\""))), QStringLiteral("a \"b\""));
    EXPECT_EQ(formatted(u"%@ %@ %@", QJsonValue(3.0), QJsonValue(0.5), QJsonValue(-2)), QStringLiteral("3 0.5 -2"));
    EXPECT_EQ(formatted(u"%@", QJsonValue(std::numeric_limits<qint64>::max())), QStringLiteral("9223372036854775807"));
    EXPECT_EQ(formatted(u"%@", QJsonValue(1e300)), QStringLiteral("1e+300"));
}

TEST(Format, dictionariesAndArrays)
{
    EXPECT_EQ(describe(QJsonObject{{QStringLiteral("key"), QStringLiteral("value")}}),
              QStringLiteral("{\n    key = value;\n}"));
    EXPECT_EQ(describe(QJsonArray{QStringLiteral("a"), QStringLiteral("b")}), QStringLiteral("(\n    a,\n    b\n)"));
    EXPECT_EQ(describe(QJsonObject()), QStringLiteral("{\n}"));
    EXPECT_EQ(describe(QJsonArray()), QStringLiteral("(\n)"));
}

TEST(Format, keysAscendAndTextsAreQuotedWhereNeeded)
{
    const QJsonObject object{{QStringLiteral("z"), QStringLiteral("")},
                             {QStringLiteral("b-c"), QStringLiteral("two words")},
                             {QStringLiteral("A_1"), QStringLiteral("x\"y\\z\n")},
                             {QStringLiteral("m"), QJsonValue(QJsonValue::Null)},
                             {QStringLiteral("n"), true}};
    EXPECT_EQ(describe(object), QStringLiteral("{\n"
                                               "    A_1 = \"x\\\"y\\\\z\\n\";\n"
                                               "    \"b-c\" = \"two words\";\n"
                                               "    m = <null>;\n"
                                               "    n = 1;\n"
                                               "    z = \"\";\n"
                                               "}"));
}

TEST(Format, nestedValuesAreIndented)
{
    const QJsonObject object{{QStringLiteral("list"), QJsonArray{1, QJsonObject{{QStringLiteral("k"), 2}}}}};
    EXPECT_EQ(describe(object), QStringLiteral("{\n"
                                               "    list = (\n"
                                               "        1,\n"
                                               "        {\n"
                                               "            k = 2;\n"
                                               "        }\n"
                                               "    );\n"
                                               "}"));
}

TEST(Format, rectangles)
{
    EXPECT_EQ(describe(QRectF(0, 10, 480, 270)), QStringLiteral("{{0, 10}, {480, 270}}"));
    EXPECT_EQ(describe(QRectF(-1.5, 0.25, 100, 1)), QStringLiteral("{{-1.5, 0.25}, {100, 1}}"));
}

TEST(Format, wholeNumbers)
{
    EXPECT_EQ(formatted(u"%d %ld %lld %lu %hhd", -1, 2L, 3LL, 4UL, true), QStringLiteral("-1 2 3 4 1"));
    EXPECT_EQ(formatted(u"%lld", std::numeric_limits<qint64>::min()), QStringLiteral("-9223372036854775808"));
    EXPECT_EQ(formatted(u"%lu", std::numeric_limits<quint64>::max()), QStringLiteral("18446744073709551615"));
    EXPECT_EQ(formatted(u"%@", std::numeric_limits<quint64>::max()), QStringLiteral("18446744073709551615"));
    EXPECT_EQ(formatted(u"%ld %@", 42, QStringLiteral("%")), QStringLiteral("42 %"));
}

TEST(Format, floatingPointNumbers)
{
    EXPECT_EQ(formatted(u"%f", 1.5), QStringLiteral("1.500000"));
    EXPECT_EQ(formatted(u" %0.1f / %0.2f mb", 1.25, 2.0), QStringLiteral(" 1.2 / 2.00 mb"));
    EXPECT_EQ(formatted(u"%.0f", 2.5), QStringLiteral("2"));
    EXPECT_EQ(formatted(u"%@ %@", 3.0, 0.1), QStringLiteral("3 0.1"));
}

TEST(Format, roundsAsPrintfDoes)
{
    for (const double number : {0.125, 0.375, 2.675, 1.005, 0.05, 0.15, 0.25, 0.35, -0.125, 1e22, 123456789.995}) {
        for (const int decimals : {0, 1, 2, 6}) {
            std::array<char, 64> expected = {};
            std::snprintf(expected.data(), expected.size(), "%.*f", decimals, number);
            EXPECT_EQ(format(QStringLiteral("%0.%1f").replace(QStringLiteral("%1"), QString::number(decimals)), number),
                      QString::fromLatin1(expected.data()));
        }
    }
}

TEST(Format, keepsThePointUnderEveryLocale)
{
    EXPECT_EQ(formatted(u"%0.2f", 0.5), QStringLiteral("0.50"));
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(formatted(u"%0.2f %@ %d", 1234.5, 1234.5, 1234), QStringLiteral("1234.50 1234.5 1234"));
}

TEST(Format, numbersOfTheOtherKindAreConverted)
{
    EXPECT_EQ(formatted(u"%f %0.2f", 3, quint64(4)), QStringLiteral("3.000000 4.00"));
    EXPECT_EQ(formatted(u"%d %lld", 3.9, -3.9), QStringLiteral("3 -3"));
    const QString lowest = QStringLiteral("-9223372036854775808");
    EXPECT_EQ(formatted(u"%lld", std::numeric_limits<double>::infinity()), lowest);
    EXPECT_EQ(formatted(u"%lld", std::nan("")), lowest);
    EXPECT_EQ(formatted(u"%lld", 9223372036854775808.0), lowest);
}

TEST(Format, descriptionsStandWhereANumberWasAskedFor)
{
    EXPECT_EQ(formatted(u"%d %0.2f %lld", QStringLiteral("x"), std::nullopt, QJsonValue(true)),
              QStringLiteral("x (null) 1"));
}

TEST(Format, percentSignsAndMissingArguments)
{
    EXPECT_EQ(formatted(u"100%%"), QStringLiteral("100%"));
    EXPECT_EQ(formatted(u"%@ %d", 1), QStringLiteral("1 %d"));
    EXPECT_EQ(formatted(u"%"), QStringLiteral("%"));
    EXPECT_EQ(formatted(u"50% %@", 1), QStringLiteral("50% 1"));
    EXPECT_EQ(formatted(u"%q %@", 1), QStringLiteral("%q 1"));
    EXPECT_EQ(formatted(u"no place", 1, 2), QStringLiteral("no place"));
    EXPECT_EQ(formatted(u"%0.99999999999f", 1).size(), 102);
}

TEST(Format, argumentsAreNotFormattedAgain)
{
    EXPECT_EQ(formatted(u"%@ %@", QStringLiteral("%@ %d"), QStringLiteral("y")), QStringLiteral("%@ %d y"));
}

struct Own
{
    friend QString describe(const Own&) { return QStringLiteral("own"); }
};

TEST(Format, classesJoinInByADescriptionOfTheirOwn)
{
    EXPECT_EQ(formatted(u"<%@> <%@>", Own(), std::optional<Own>()), QStringLiteral("<own> <(null)>"));
}

} // namespace
