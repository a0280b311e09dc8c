#include "download/DownloadFileName.h"

#include "records/TLJiraOptions.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

QString of(const char* name)
{
    return downloadFileName(QString::fromUtf8(name));
}

TEST(DownloadFileNameTest, givesAPacketTheDocumentsExtension)
{
    EXPECT_EQ(of("plan.tessaloompacket"), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(of("my plan.v2.tessaloompacket"), QStringLiteral("my plan.v2.tessaloom"));
}

TEST(DownloadFileNameTest, appendsTheExtensionToEveryOtherName)
{
    EXPECT_EQ(of("notes.txt"), QStringLiteral("notes.txt.tessaloom"));
    EXPECT_EQ(of("notes"), QStringLiteral("notes.tessaloom"));
    EXPECT_EQ(of("notes."), QStringLiteral("notes..tessaloom"));
    EXPECT_EQ(of("plan.tessaloom"), QStringLiteral("plan.tessaloom.tessaloom"));
    EXPECT_EQ(of(".hidden"), QStringLiteral(".hidden.tessaloom"));
    EXPECT_EQ(of("Übersicht (1).png"), QStringLiteral("Übersicht (1).png.tessaloom"));
}

TEST(DownloadFileNameTest, comparesThePacketsExtensionExactly)
{
    EXPECT_EQ(of("plan.TessaloomPacket"), QStringLiteral("plan.TessaloomPacket.tessaloom"));
    EXPECT_EQ(of("tessaloompacket"), QStringLiteral("tessaloompacket.tessaloom"));
    EXPECT_EQ(of(".tessaloompacket"), QStringLiteral(".tessaloompacket.tessaloom"));
    EXPECT_EQ(of("plan.tessaloompacket.zip"), QStringLiteral("plan.tessaloompacket.zip.tessaloom"));
}

TEST(DownloadFileNameTest, staysInsideTheFolder)
{
    EXPECT_EQ(of("../../etc/passwd"), QStringLiteral(".._.._etc_passwd.tessaloom"));
    EXPECT_EQ(of("/etc/passwd"), QStringLiteral("_etc_passwd.tessaloom"));
    EXPECT_EQ(of("a/b.tessaloompacket"), QStringLiteral("a_b.tessaloom"));
    EXPECT_EQ(of("plan.tessaloom/"), QStringLiteral("plan.tessaloom_.tessaloom"));
    EXPECT_EQ(of(".."), QStringLiteral("_.tessaloom"));
    EXPECT_EQ(of("."), QStringLiteral("_.tessaloom"));
    EXPECT_EQ(of("..tessaloompacket"), QStringLiteral("..tessaloom"));
}

TEST(DownloadFileNameTest, namesWhatHasNoName)
{
    EXPECT_EQ(of(""), QStringLiteral("_.tessaloom"));
    EXPECT_EQ(downloadFileName(std::nullopt), QStringLiteral("_.tessaloom"));
}

TEST(DownloadFileNameTest, holdsNoControlCharacters)
{
    EXPECT_EQ(of("a\nb\tc\x7f.txt"), QStringLiteral("a_b_c_.txt.tessaloom"));
    EXPECT_EQ(downloadFileName(QStringLiteral("a") + QChar(0) + QStringLiteral("b")), QStringLiteral("a_b.tessaloom"));
}

TEST(DownloadFileNameTest, fitsAFileSystemWithTheExtension)
{
    const QString ending = QStringLiteral(".tessaloom");
    for (const int letters : {244, 245, 246, 254, 255, 256, 300, 5000}) {
        const QString name = downloadFileName(QString(letters, u'x'));
        EXPECT_EQ(name, QString(qMin(letters, 245), u'x') + ending);
    }
    EXPECT_EQ(downloadFileName(QString(300, u'x') + QStringLiteral(".tessaloompacket")), QString(239, u'x') + ending);
    EXPECT_EQ(downloadFileName(QStringLiteral("x.") + QString(300, u'y')).toUtf8().size(), 255);
}

TEST(DownloadFileNameTest, cutsLongNamesBetweenCharacters)
{
    const QString name = downloadFileName(QString(300, u'ü'));
    EXPECT_EQ(name, QString(122, u'ü') + QStringLiteral(".tessaloom"));
}

/// Of a host with documents of its own.
class OwnDownloadFileNameTest : public testing::Test
{
protected:
    ~OwnDownloadFileNameTest() override { TLJiraOptions::use({}); }

    static void chooseTwoKinds()
    {
        TLJiraOptions::use({.documents = {{QStringLiteral("odt"), QStringLiteral("odtzip")}, {QStringLiteral("ods")}}});
    }
};

TEST_F(OwnDownloadFileNameTest, doublesNoExtension)
{
    chooseTwoKinds();
    EXPECT_EQ(of("plan.odt"), QStringLiteral("plan.odt"));
    EXPECT_EQ(of("plan.ods"), QStringLiteral("plan.ods"));
}

TEST_F(OwnDownloadFileNameTest, givesAPacketTheExtensionOfItsKind)
{
    chooseTwoKinds();
    EXPECT_EQ(of("plan.odtzip"), QStringLiteral("plan.odt"));
    TLJiraOptions::use({.documents = {{QStringLiteral("ods")}, {QStringLiteral("odt"), QStringLiteral("odtzip")}}});
    EXPECT_EQ(of("plan.odtzip"), QStringLiteral("plan.odt"));
}

TEST_F(OwnDownloadFileNameTest, appendsTheFirstExtensionToOtherNames)
{
    chooseTwoKinds();
    EXPECT_EQ(of("plan.tessaloom"), QStringLiteral("plan.tessaloom.odt"));
    EXPECT_EQ(of("plan"), QStringLiteral("plan.odt"));
}

TEST_F(OwnDownloadFileNameTest, keepsAllNamesWhereAllAttachmentsAreDocuments)
{
    TLJiraOptions::use({.documents = {}});
    EXPECT_EQ(of("plan.tessaloompacket"), QStringLiteral("plan.tessaloompacket"));
    EXPECT_EQ(of("plan"), QStringLiteral("plan"));
    EXPECT_EQ(of("../plan"), QStringLiteral(".._plan"));
}

} // namespace
