#include "upload/DocumentFolder.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(DocumentFolder, isTheOneThatHoldsTheDocument)
{
    EXPECT_EQ(folderToRemove(u"/tmp/copy/plan.tessaloom"_s), u"/tmp/copy"_s);
    EXPECT_EQ(folderToRemove(u"copy/plan.tessaloom"_s), u"copy"_s);
}

TEST(DocumentFolder, isNeverTheRootOfTheDisk)
{
    EXPECT_EQ(folderToRemove(u"/plan.tessaloom"_s), std::nullopt);
    EXPECT_EQ(folderToRemove(u"//plan.tessaloom"_s), std::nullopt);
    EXPECT_EQ(folderToRemove(u"/../plan.tessaloom"_s), std::nullopt);
    EXPECT_EQ(folderToRemove(u"/tmp/../plan.tessaloom"_s), std::nullopt);
    EXPECT_EQ(folderToRemove(u"/"_s), std::nullopt);
}

TEST(DocumentFolder, isNoneWithoutAFolderOrADocument)
{
    EXPECT_EQ(folderToRemove(u"plan.tessaloom"_s), std::nullopt);
    EXPECT_EQ(folderToRemove(std::nullopt), std::nullopt);
}

} // namespace
