#include "platform/foundation/values/VariantDescription.h"

#include "tests/kit/Printers.h"

#include <QObject>
#include <QRectF>
#include <QSizeF>

#include <gtest/gtest.h>

namespace {

using tljira::describe;

/// A type that no text can be made of.
struct Pattern
{
    int threads = 0;
};

QString addressOf(const QObject& object)
{
    return QStringLiteral("0x%1").arg(reinterpret_cast<quintptr>(&object), 0, 16);
}

TEST(VariantDescription, printsTextsNumbersAndBooleansAsTheyAre)
{
    EXPECT_EQ(describe(QVariant(QStringLiteral("first page"))), QStringLiteral("first page"));
    EXPECT_EQ(describe(QVariant(2)), QStringLiteral("2"));
    EXPECT_EQ(describe(QVariant(0.5)), QStringLiteral("0.5"));
    EXPECT_EQ(describe(QVariant(true)), QStringLiteral("1"));
    EXPECT_EQ(describe(QVariant()), QStringLiteral("<null>"));
}

TEST(VariantDescription, printsRectanglesPointsAndSizesByTheirNumbers)
{
    EXPECT_EQ(describe(QVariant(QRectF(0.5, 1, 210, 297))), QStringLiteral("{{0.5, 1}, {210, 297}}"));
    EXPECT_EQ(describe(QVariant(QRect(1, 2, 3, 4))), QStringLiteral("{{1, 2}, {3, 4}}"));
    EXPECT_EQ(describe(QVariant(QPointF(1.5, -2))), QStringLiteral("{1.5, -2}"));
    EXPECT_EQ(describe(QVariant(QPoint(1, 2))), QStringLiteral("{1, 2}"));
    EXPECT_EQ(describe(QVariant(QSizeF(210, 297.5))), QStringLiteral("{210, 297.5}"));
    EXPECT_EQ(describe(QVariant(QSize(210, 297))), QStringLiteral("{210, 297}"));
}

TEST(VariantDescription, printsAnObjectByItsClassAndPlace)
{
    QObject object;
    EXPECT_EQ(describe(QVariant::fromValue(&object)), QStringLiteral("<QObject: %1>").arg(addressOf(object)));
    EXPECT_EQ(describe(QVariant::fromValue<QObject*>(nullptr)), QStringLiteral("(null)"));
}

TEST(VariantDescription, printsMapsAndListsWithWhatTheyHold)
{
    QObject object;
    const QVariantMap page = {{QStringLiteral("width"), 210},
                              {QStringLiteral("frame"), QRectF(0, 0, 1, 2)},
                              {QStringLiteral("owner"), QVariant::fromValue(&object)},
                              {QStringLiteral("names"), QStringList{QStringLiteral("warp"), QStringLiteral("a b")}}};
    EXPECT_EQ(describe(QVariant(page)), QStringLiteral("{\n"
                                                       "    frame = \"{{0, 0}, {1, 2}}\";\n"
                                                       "    names = (\n"
                                                       "        warp,\n"
                                                       "        \"a b\"\n"
                                                       "    );\n"
                                                       "    owner = \"<QObject: %1>\";\n"
                                                       "    width = 210;\n"
                                                       "}")
                                            .arg(addressOf(object)));
    EXPECT_EQ(describe(QVariant(QVariantHash{{QStringLiteral("size"), QSize(1, 2)}})),
              QStringLiteral("{\n    size = \"{1, 2}\";\n}"));
    EXPECT_EQ(describe(QVariant(QVariantList{1, QRect(0, 0, 1, 1)})),
              QStringLiteral("(\n    1,\n    \"{{0, 0}, {1, 1}}\"\n)"));
}

TEST(VariantDescription, printsTheTypeOfWhatHasNoText)
{
    const std::string text = describe(QVariant::fromValue(Pattern())).toStdString();
    EXPECT_TRUE(text.starts_with('<') && text.ends_with("Pattern>")) << text;
}

} // namespace
