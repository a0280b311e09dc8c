#include "framework/TLJiraController.h"

#include <QLibrary>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

constexpr char versionText[] = "@(#)PROGRAM:TLJiraController  PROJECT:TLJiraController-1\n";

TEST(Version, isNumberOneAsADouble)
{
    static_assert(std::is_same_v<decltype(TLJiraControllerVersionNumber), const double>);
    EXPECT_EQ(TLJiraControllerVersionNumber, 1.0);
}

TEST(Version, isATextOfUnsignedBytesWithALineFeedAndAZero)
{
    static_assert(std::is_same_v<std::remove_extent_t<decltype(TLJiraControllerVersionString)>, const unsigned char>);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(TLJiraControllerVersionString), sizeof versionText),
              std::string(versionText, sizeof versionText));
}

TEST(Version, isFoundInTheLibraryUnderItsPlainNames)
{
    QLibrary library(QStringLiteral(FRAMEWORK_PATH));

    const auto* number = reinterpret_cast<const double*>(library.resolve("TLJiraControllerVersionNumber"));
    const auto* text = reinterpret_cast<const char*>(library.resolve("TLJiraControllerVersionString"));

    ASSERT_TRUE(number && text) << library.errorString().toStdString();
    EXPECT_EQ(*number, 1.0);
    EXPECT_STREQ(text, versionText);
}

} // namespace
