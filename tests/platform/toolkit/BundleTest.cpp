#include "platform/toolkit/nib/Bundle.h"

#include <QFile>

#include <gmock/gmock.h>

namespace {

using tljira::Bundle;

TEST(Bundle, isFoundByTheIdentifierItsFilesWereEmbeddedUnder)
{
    const auto bundle = Bundle::bundleWithIdentifier(QStringLiteral("com.example.forms"));

    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->identifier(), QStringLiteral("com.example.forms"));
    EXPECT_TRUE(QFile::exists(bundle->pathForInterfaceFile(QStringLiteral("Form"))));
    EXPECT_FALSE(QFile::exists(bundle->pathForInterfaceFile(QStringLiteral("Nothing"))));
}

TEST(Bundle, isAbsentWhenNothingWasEmbeddedUnderTheIdentifier)
{
    EXPECT_FALSE(Bundle::bundleWithIdentifier(QStringLiteral("com.example.nothing")));
    EXPECT_FALSE(Bundle::bundleWithIdentifier(QString()));
}

TEST(Bundle, ofAStaticLibraryThatNobodyCallsIsThere)
{
    const auto bundle = Bundle::bundleWithIdentifier(QStringLiteral("com.example.packed"));

    ASSERT_TRUE(bundle);
    EXPECT_TRUE(QFile::exists(bundle->pathForInterfaceFile(QStringLiteral("Packed"))));
}

TEST(Bundle, ofTheHostHoldsItsOwnFiles)
{
    EXPECT_TRUE(QFile::exists(Bundle::mainBundle().pathForInterfaceFile(QStringLiteral("Plain"))));
    EXPECT_FALSE(QFile::exists(Bundle::mainBundle().pathForInterfaceFile(QStringLiteral("Form"))));
}

TEST(Bundle, ofTheHostComesFirstForAFileThatBothHave)
{
    const auto forms = Bundle::bundleWithIdentifier(QStringLiteral("com.example.forms"));

    EXPECT_TRUE(Bundle::forInterfaceFile(QStringLiteral("Plain"), forms).isMainBundle());
    EXPECT_EQ(Bundle::forInterfaceFile(QStringLiteral("Form"), forms).identifier(),
              QStringLiteral("com.example.forms"));
    EXPECT_TRUE(Bundle::forInterfaceFile(QStringLiteral("Form"), std::nullopt).isMainBundle());
}

} // namespace
