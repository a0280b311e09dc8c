#include "records/Documents.h"

#include "records/TLJiraOptions.h"
#include "tests/kit/Printers.h"
#include "tests/records/RecordMaking.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using tests::attachment;
using tests::attachments;

const QString early = u"2017-01-01T00:00:00.000+0000"_s;
const QString late = u"2018-01-01T00:00:00.000+0000"_s;

QStringList idsOf(const JAIssueObject::Attachments& list)
{
    QStringList ids;
    for (const auto& one : list)
        ids.append(one->ID().value_or(u"-"_s));
    return ids;
}

TEST(DocumentsTest, areListedNewestFirst)
{
    const auto list = attachments({attachment(u"1"_s, u"a.tessaloom"_s, early), attachment(u"2"_s, u"b.png"_s, late),
                                   attachment(u"3"_s, u"c.tessaloom"_s, late)});
    EXPECT_EQ(idsOf(documentsNewestFirst(list)), (QStringList{u"3"_s, u"1"_s}));
}

TEST(DocumentsTest, areKnownByTheirExactExtension)
{
    const auto list =
        attachments({attachment(u"1"_s, u"a.TESSALOOM"_s, early), attachment(u"2"_s, u"a.tessaloompacket"_s, early),
                     attachment(u"3"_s, u"a.tessaloom.zip"_s, early), attachment(u"4"_s, u"tessaloom"_s, early),
                     attachment(u"5"_s, u".tessaloom"_s, early), QJsonObject{{u"id"_s, u"6"_s}},
                     attachment(u"7"_s, u"a.b.tessaloom"_s, early)});
    EXPECT_EQ(idsOf(documentsNewestFirst(list)), QStringList{u"7"_s});
}

TEST(DocumentsTest, withoutADateComeLastAndThoseOfOneDateKeepTheirOrder)
{
    const auto list =
        attachments({attachment(u"1"_s, u"a.tessaloom"_s, u"?"_s), attachment(u"2"_s, u"a.tessaloom"_s, early),
                     attachment(u"3"_s, u"a.tessaloom"_s, early), attachment(u"4"_s, u"a.tessaloom"_s, u"?"_s)});
    EXPECT_EQ(idsOf(documentsNewestFirst(list)), (QStringList{u"2"_s, u"3"_s, u"1"_s, u"4"_s}));
}

TEST(DocumentsTest, stayInTheServersOrderWhereNoneIsAskedFor)
{
    const auto list = attachments({attachment(u"1"_s, u"a.tessaloom"_s, early), attachment(u"2"_s, u"b.png"_s, late),
                                   attachment(u"3"_s, u"c.tessaloom"_s, late)});
    EXPECT_EQ(idsOf(documentsAmong(list)), (QStringList{u"1"_s, u"3"_s}));
}

/// Of a host with documents of its own.
class OwnDocumentsTest : public testing::Test
{
protected:
    ~OwnDocumentsTest() override { TLJiraOptions::use({}); }

    const JAIssueObject::Attachments list =
        attachments({attachment(u"1"_s, u"a.tessaloom"_s, early), attachment(u"2"_s, u"b.odt"_s, late),
                     attachment(u"3"_s, u"c.ods"_s, late), attachment(u"4"_s, u"d.ODT"_s, late),
                     attachment(u"5"_s, u"odt"_s, late), QJsonObject{{u"id"_s, u"6"_s}}});
};

TEST_F(OwnDocumentsTest, areThoseOfItsKind)
{
    TLJiraOptions::use({.documents = {{u"odt"_s}}});
    EXPECT_EQ(idsOf(documentsAmong(list)), QStringList{u"2"_s});
}

TEST_F(OwnDocumentsTest, areThoseOfItsKinds)
{
    TLJiraOptions::use({.documents = {{u"ods"_s}, {u"odt"_s}}});
    EXPECT_EQ(idsOf(documentsNewestFirst(list)), (QStringList{u"2"_s, u"3"_s}));
}

TEST_F(OwnDocumentsTest, areAllWithoutAKind)
{
    TLJiraOptions::use({.documents = {}});
    EXPECT_EQ(idsOf(documentsAmong(list)), (QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s}));
    EXPECT_EQ(idsOf(documentsNewestFirst(list)), (QStringList{u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"1"_s, u"6"_s}));
}

} // namespace
