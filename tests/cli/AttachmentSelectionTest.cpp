#include "cli/AttachmentSelection.h"

#include "tests/kit/Printers.h"
#include "tests/records/RecordMaking.h"

#include <gmock/gmock.h>

namespace {

using namespace Qt::StringLiterals;
using tests::attachment;
using tests::attachments;

const QString early = u"2017-01-01T00:00:00.000+0000"_s;
const QString late = u"2018-01-01T00:00:00.000+0000"_s;

TEST(AttachmentSelection, findsTheNewestOfAName)
{
    const auto list = attachments({attachment(u"1"_s, u"plan"_s, u"?"_s), attachment(u"2"_s, u"plan"_s, late),
                                   attachment(u"3"_s, u"plan"_s, early), attachment(u"4"_s, u"Plan"_s, late)});
    EXPECT_EQ(cli::findAttachment(list, u"plan"_s)->ID(), u"2"_s);
}

TEST(AttachmentSelection, findsTheLastOfEquallyOldOnes)
{
    const auto list = attachments({attachment(u"1"_s, u"plan"_s, early), attachment(u"2"_s, u"plan"_s, early)});
    EXPECT_EQ(cli::findAttachment(list, u"plan"_s)->ID(), u"2"_s);
}

TEST(AttachmentSelection, prefersAnIdToAName)
{
    const auto list = attachments({attachment(u"1"_s, u"2"_s, late), attachment(u"2"_s, u"1"_s, early)});
    EXPECT_EQ(cli::findAttachment(list, u"2"_s)->name(), u"1"_s);
}

TEST(AttachmentSelection, findsNothingForAnotherName)
{
    const auto list = attachments({QJsonObject(), attachment(u"1"_s, u"plan"_s, late)});
    EXPECT_EQ(cli::findAttachment(list, u"pla"_s), nullptr);
    EXPECT_EQ(cli::findAttachment(list, u""_s), nullptr);
}

} // namespace
