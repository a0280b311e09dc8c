#include "tests/kit/HearAnswers.h"
#include "tests/kit/HeldGlobalQueue.h"
#include "tests/upload/UploadTest.h"

#include <QFileInfo>
#include <QtTest/QTest>

namespace {

using namespace tests;
using namespace testing;

class UploadProgressTest : public UploadTest
{
protected:
    /// What the client would report of the upload that is going.
    void report(qint64 bytesSent, qint64 bytesExpected)
    {
        log.clear();
        client->uploadCallBack()(bytesSent, bytesExpected);
        EXPECT_EQ(log.lines(), QStringList()) << "progress came inside the client's call";
        drainMainQueue();
    }

    QStringList attachments() const
    {
        QStringList all;
        for (const auto& attachment : server.attachments("ABC-1"))
            all.append(QString::fromStdString(attachment.fileName + ": " + *server.content(attachment.id)));
        return all;
    }
};

TEST_F(UploadProgressTest, sendsTheDocumentUnderItsName)
{
    EXPECT_FALSE(panel->isUploading());
    upload();
    EXPECT_TRUE(panel->isUploading());

    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
    EXPECT_TRUE(waitUntil([this] { return !panel->isUploading(); }));
    EXPECT_EQ(attachments(), QStringList(QStringLiteral("Plan.tessaloom: contents of the document\n")));
    EXPECT_EQ(panel->zipFilePath(), document.path());
}

TEST_F(UploadProgressTest, startsAtTheReturnKey)
{
    ui::type(panel->taskTextField(), QStringLiteral("ABC-1"));
    QTest::keyClick(panel->taskTextField(), Qt::Key_Return);

    EXPECT_TRUE(isSheetUp());
    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
    EXPECT_EQ(attachments().size(), 1);
}

TEST_F(UploadProgressTest, ignoresTheButtonWithoutAKey)
{
    ui::click(panel->uploadFileButton());
    drainMainQueue();

    EXPECT_EQ(window->attachedSheet(), nullptr);
    EXPECT_FALSE(ui::isShown(panel->shadow()));
    EXPECT_TRUE(panel->taskTextField()->isEnabled());
    EXPECT_EQ(panel->zipFilePath(), std::nullopt);
    EXPECT_EQ(log.lines(), QStringList());
    hearAnswers(*client);
    EXPECT_EQ(server.requests().size(), 1U);
    EXPECT_TRUE(QFileInfo::exists(document.path()));
}

TEST_F(UploadProgressTest, takesTheKeyAsItIsTyped)
{
    upload(QStringLiteral("abc-1"));

    EXPECT_EQ(outcome(), QStringLiteral("The operation couldn’t be completed. ((null) error 404.)"));
    EXPECT_EQ(server.lastRequest().path, "/rest/api/2/issue/abc-1/attachments");
}

TEST_F(UploadProgressTest, takesTheKeyWithItsBlanks)
{
    upload(QStringLiteral(" ABC-1 "));

    EXPECT_EQ(outcome(), QStringLiteral("The operation couldn’t be completed. ((null) error 404.)"));
    EXPECT_EQ(server.lastRequest().target, "/rest/api/2/issue/%20ABC-1%20/attachments");
}

TEST_F(UploadProgressTest, takesAKeyOfBlanksForAKey)
{
    upload(QStringLiteral("  "));

    EXPECT_TRUE(isSheetUp());
    EXPECT_NE(outcome(), QString());
    EXPECT_EQ(server.lastRequest().target, "/rest/api/2/issue/%20%20/attachments");
}

TEST_F(UploadProgressTest, showsTheSheetBeforeAnythingIsSent)
{
    const HeldGlobalQueue slowDisk;
    upload();

    EXPECT_TRUE(isSheetUp());
    EXPECT_EQ(sheet()->sizeLabel()->text(), QStringLiteral("size is calculated"));
    EXPECT_EQ(sheet()->uploadingProgressBar()->value(), 1);
    EXPECT_TRUE(ui::isShown(sheet()->uploadingView()));
    EXPECT_TRUE(ui::isShown(panel->shadow()));
    EXPECT_FALSE(panel->taskTextField()->isEnabled());
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(UploadProgressTest, leavesTheSheetUpUntilTheUserClosesIt)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    drainMainQueue();

    EXPECT_TRUE(isSheetUp());
    EXPECT_TRUE(ui::isShown(panel->shadow()));
    EXPECT_FALSE(panel->taskTextField()->isEnabled());

    ui::click(sheet()->cancelButton());

    EXPECT_EQ(window->attachedSheet(), nullptr);
    EXPECT_FALSE(ui::isShown(panel->shadow()));
    EXPECT_TRUE(panel->taskTextField()->isEnabled());
}

TEST_F(UploadProgressTest, removesTheFolderOfTheDocument)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));

    EXPECT_FALSE(QFileInfo::exists(document.folder()));
    EXPECT_TRUE(log.lines().contains(
        QStringLiteral("before delete src -> p1 = %1, p2 = %2").arg(document.path(), document.folder())));
    EXPECT_THAT(log.lines().filter(QStringLiteral("delete src rError")), IsEmpty());
}

TEST_F(UploadProgressTest, endsWithAHundredPercentAndAllBytes)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));

    EXPECT_EQ(sheet()->uploadingProgressBar()->value(), 100);
    const auto length = server.requests("*/attachments").at(0).bodyLength;
    EXPECT_TRUE(log.lines().contains(QStringLiteral("updateCallBack %1 %1 100").arg(length)));
}

TEST_F(UploadProgressTest, showsPercentAndMegabytes)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    report(5242880, 10485760);

    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("updateCallBack 5242880 10485760 50")));
    EXPECT_EQ(sheet()->uploadingProgressBar()->value(), 50);
    EXPECT_EQ(sheet()->sizeLabel()->text(), QStringLiteral(" 5.0 / 10.00 mb"));
}

TEST_F(UploadProgressTest, cutsThePercentOffBehindThePoint)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    report(1999, 100000);

    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("updateCallBack 1999 100000 1")));
    EXPECT_EQ(sheet()->sizeLabel()->text(), QStringLiteral(" 0.0 / 0.10 mb"));
}

TEST_F(UploadProgressTest, dividesBeforeItMultiplies)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    // 100 / 97 * 97 is a little less than 100.
    report(97, 97);

    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("updateCallBack 97 97 99")));
    EXPECT_EQ(sheet()->uploadingProgressBar()->value(), 99);
}

TEST_F(UploadProgressTest, countsBeyondFourGigabytes)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    report(7516192768, 10737418240);

    EXPECT_EQ(sheet()->uploadingProgressBar()->value(), 70);
    EXPECT_EQ(sheet()->sizeLabel()->text(), QStringLiteral(" 7168.0 / 10240.00 mb"));
}

TEST_F(UploadProgressTest, showsTheBarAtOneWhenNothingIsExpected)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));

    report(0, 0);
    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("updateCallBack 0 0 -9223372036854775808")));
    EXPECT_EQ(sheet()->uploadingProgressBar()->value(), 1);

    report(5, 0);
    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("updateCallBack 5 0 -9223372036854775808")));
    EXPECT_EQ(sheet()->uploadingProgressBar()->value(), 1);
    EXPECT_EQ(sheet()->sizeLabel()->text(), QStringLiteral(" 0.0 / 0.00 mb"));
}

TEST_F(UploadProgressTest, showsHowFarAHeldUploadHasCome)
{
    // More than the buffers between client and server hold.
    const LoneDocument large(QByteArray(32 << 20, 'x'));
    panel->setNewPathFile(large.path(), LoneDocument::name());
    holdUploadsAfter(1 << 20);
    upload();
    waitForHeldExchange();

    ASSERT_TRUE(waitUntil([this] { return sheet()->sizeLabel()->text().endsWith(QStringLiteral(" / 32.00 mb")); }));
    EXPECT_LT(sheet()->uploadingProgressBar()->value(), 100);
    EXPECT_FALSE(isDone());

    server.release();
    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
}

TEST_F(UploadProgressTest, sendsASecondDocumentThroughTheSameSheet)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    ui::click(sheet()->cancelButton());

    const LoneDocument second("another one");
    panel->setNewPathFile(second.path(), QStringLiteral("Second.tessaloom"));
    upload();
    EXPECT_TRUE(isSheetUp());
    EXPECT_EQ(sheet()->sizeLabel()->text(), QStringLiteral("size is calculated"));

    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
    EXPECT_EQ(attachments(), QStringList({QStringLiteral("Plan.tessaloom: contents of the document\n"),
                                          QStringLiteral("Second.tessaloom: another one")}));
    EXPECT_FALSE(QFileInfo::exists(second.folder()));
}

} // namespace
