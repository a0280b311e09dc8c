#include "cli/TextOutput.h"

#include "tests/records/RecordMaking.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using tests::attachment;
using tests::attachments;

TEST(TextOutput, alignsTheColumnsOfAttachments)
{
    qputenv("TZ", "UTC-2");
    const auto list = attachments({attachment(u"7"_s, u"b.png"_s, u"2017-10-16T10:06:29.399+0200"_s, 5),
                                   attachment(u"10013"_s, u"a b"_s, u"2017-12-31T23:30:00.000+0000"_s, 60444)});
    EXPECT_EQ(cli::textOfAttachments(list), "7          5  2017-10-16 10:06:29  b.png\n"
                                            "10013  60444  2018-01-01 01:30:00  a b\n");
}

TEST(TextOutput, showsAHyphenForWhatIsNotKnown)
{
    EXPECT_EQ(cli::textOfAttachments(attachments({QJsonObject()})), "-  0  -  -\n");
    EXPECT_EQ(cli::textOfAttachments({}), "");
}

TEST(TextOutput, makesNamesHarmless)
{
    const auto list = attachments({attachment(u"1\n2"_s, u"a\x1b]0;x\x07\nb"_s, u"no date"_s)});
    EXPECT_EQ(cli::textOfAttachments(list), "1?2  1  -  a?]0;x??b\n");
}

TEST(TextOutput, linesUpPairsAndLeavesOutEmptyOnes)
{
    EXPECT_EQ(cli::textOfPairs({{u"name"_s, u"anna"_s}, {u"a longer one"_s, std::nullopt}, {u"e-mail"_s, u"ö\n"_s}}),
              "name    anna\ne-mail  ö?\n");
}

} // namespace
