#include "host/DocumentText.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

using tessaloom::DocumentText;

namespace {

QByteArray thereAndBack(const QByteArray& bytes)
{
    const auto document = DocumentText::fromBytes(bytes);
    return document ? document->toBytes() : QByteArray("(refused)");
}

TEST(DocumentText, isTheDecodedText)
{
    const auto document = DocumentText::fromBytes("warp ··\nweft\n");

    ASSERT_TRUE(document);
    EXPECT_EQ(document->text, QStringLiteral("warp ··\nweft\n"));
}

TEST(DocumentText, keepsAnEmptyFileEmpty)
{
    EXPECT_EQ(thereAndBack(""), QByteArray(""));
}

TEST(DocumentText, keepsCarriageReturnsOutOfTheTextAndInTheFile)
{
    const auto document = DocumentText::fromBytes("a\r\nb\r\n");

    ASSERT_TRUE(document);
    EXPECT_EQ(document->text, QStringLiteral("a\nb\n"));
    EXPECT_EQ(document->toBytes(), QByteArray("a\r\nb\r\n"));
}

TEST(DocumentText, keepsAByteOrderMark)
{
    EXPECT_EQ(thereAndBack("\xEF\xBB\xBFwool"), QByteArray("\xEF\xBB\xBFwool"));
}

TEST(DocumentText, keepsNoBreakSpaces)
{
    EXPECT_EQ(thereAndBack("60\xC2\xA0"
                           "cm"),
              QByteArray("60\xC2\xA0"
                         "cm"));
}

TEST(DocumentText, refusesWhatIsNoUtf8)
{
    EXPECT_FALSE(DocumentText::fromBytes("caf\xE9"));
}

TEST(DocumentText, refusesMixedLineEnds)
{
    EXPECT_FALSE(DocumentText::fromBytes("a\r\nb\nc"));
    EXPECT_FALSE(DocumentText::fromBytes("a\rb"));
}

TEST(DocumentText, refusesCharactersThatTheEditorTakesForLineEnds)
{
    EXPECT_FALSE(DocumentText::fromBytes("a\xE2\x80\xA8z"));
    EXPECT_FALSE(DocumentText::fromBytes(QByteArray("a\0z", 3)));
}

} // namespace
