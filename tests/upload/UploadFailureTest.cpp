#include "tests/upload/UploadTest.h"

#include <QDir>
#include <QFileInfo>

namespace {

using namespace tests;
using namespace testing;
using standin::Fault;
using standin::Match;
using standin::Point;

class UploadFailureTest : public UploadTest
{
protected:
    void answerUploadsWith(const Fault& fault) { server.misbehave(Match::on("POST", "*/attachments"), fault); }
};

TEST_F(UploadFailureTest, namesTheReasonThatTheServerGives)
{
    answerUploadsWith(Fault().status(400, R"({"error":"The disk is full"})", "application/json"));
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("The operation couldn’t be completed. (The disk is full error 400.)"));
    EXPECT_EQ(sheet()->errortitle()->text(), QStringLiteral("Error"));
}

TEST_F(UploadFailureTest, tellsOfMissingPermission)
{
    server.allowAttachments(false);
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("The operation couldn’t be completed. ((null) error 403.)"));
}

TEST_F(UploadFailureTest, tellsOfAnUnknownIssue)
{
    upload(QStringLiteral("NO-1"));

    EXPECT_EQ(outcome(), QStringLiteral("The operation couldn’t be completed. ((null) error 404.)"));
}

TEST_F(UploadFailureTest, tellsOfALostSession)
{
    server.expireSessions();
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("The operation couldn’t be completed. ((null) error 401.)"));
}

TEST_F(UploadFailureTest, tellsOfASessionLostUnderWay)
{
    const LoneDocument large(QByteArray(8 << 20, 'x'));
    panel->setNewPathFile(large.path(), LoneDocument::name());
    answerUploadsWith(Fault()
                          .status(401, R"({"errorMessages":["Session expired"]})", "application/json")
                          .hold(Point::requestBody(1 << 20)));
    upload();
    waitForHeldExchange();
    panel->jaInvalidSession();
    server.release();

    EXPECT_EQ(outcome(), QStringLiteral("The operation couldn’t be completed. ((null) error 401.)"));
    EXPECT_TRUE(isSheetUp());
}

TEST_F(UploadFailureTest, keepsTheErrorOfAnAnswerThatIsNoJsonThroughTheSuccessThatFollows)
{
    answerUploadsWith(Fault().status(502, "<html>Bad gateway</html>", "text/html"));
    upload();
    ASSERT_TRUE(waitUntil([this] { return isDone(); }));

    EXPECT_TRUE(hasFailed());
    EXPECT_EQ(sheet()->errorMessage()->text(),
              QStringLiteral("The operation couldn’t be completed. (Fatal error error 502.)"));
    EXPECT_EQ(log.lines().filter(QStringLiteral("before delete src")).size(), 2);
    EXPECT_EQ(log.lines().filter(QStringLiteral("delete src rError")).size(), 1);
    EXPECT_FALSE(QFileInfo::exists(document.folder()));
}

TEST_F(UploadFailureTest, tellsOfAnEmptyAnswer)
{
    answerUploadsWith(Fault().status(200));
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("The operation couldn’t be completed. (Fatal error error 200.)"));
}

TEST_F(UploadFailureTest, tellsOfAConnectionThatBreaks)
{
    const LoneDocument large(QByteArray(8 << 20, 'x'));
    panel->setNewPathFile(large.path(), LoneDocument::name());
    answerUploadsWith(Fault().reset(Point::requestBody(1 << 20)));
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("The network connection was lost."));
}

TEST_F(UploadFailureTest, tellsOfAServerThatIsDown)
{
    client->setHost(deadAddress);
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("Could not connect to the server."));
}

TEST_F(UploadFailureTest, tellsOfAMissingAddress)
{
    client->setHost(std::nullopt);
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("unsupported URL"));
}

TEST_F(UploadFailureTest, tellsOfADocumentThatShrinksUnderWay)
{
    const LoneDocument large(QByteArray(64 << 20, 'x'));
    panel->setNewPathFile(large.path(), LoneDocument::name());
    holdUploadsAfter(1 << 20);
    upload();
    waitForHeldExchange();
    ASSERT_TRUE(QFile(large.path()).resize(1 << 20));
    server.release();

    EXPECT_NE(outcome(), QStringLiteral("DONE"));
    EXPECT_TRUE(hasFailed());
    EXPECT_THAT(sheet()->errorMessage()->text().toStdString(), HasSubstr("plan.tessaloom"));
    EXPECT_TRUE(server.attachments("ABC-1").empty());
}

TEST_F(UploadFailureTest, letsTheServerRefuseADocumentThatIsNotThere)
{
    panel->setNewPathFile(QStringLiteral("/no/such/folder/plan.tessaloom"), LoneDocument::name());
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("The operation couldn’t be completed. ((null) error 500.)"));
    EXPECT_EQ(log.lines().filter(QStringLiteral("delete src rError")).size(), 1);
}

TEST_F(UploadFailureTest, removesTheFolderOfTheDocumentAllTheSame)
{
    server.allowAttachments(false);
    upload();
    outcome();

    EXPECT_FALSE(QFileInfo::exists(document.folder()));
}

TEST_F(UploadFailureTest, shrugsOffAFolderThatIsGone)
{
    holdUploadsAfter(0);
    upload();
    waitForHeldExchange();
    ASSERT_TRUE(QDir(document.folder()).removeRecursively());
    server.release();

    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
    const QStringList lines = log.lines().filter(QStringLiteral("delete src rError"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines.at(0).toStdString(), StartsWith("delete src rError -> "));
    EXPECT_THAT(lines.at(0).toStdString(), HasSubstr("“outbox” couldn’t be removed"));
}

TEST_F(UploadFailureTest, leavesTheWorkingFolderAloneForADocumentWithoutAFolder)
{
    ASSERT_TRUE(QDir::setCurrent(document.folder()));
    panel->setNewPathFile(QStringLiteral("plan.tessaloom"), LoneDocument::name());
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
    EXPECT_TRUE(log.lines().contains(QStringLiteral("before delete src -> p1 = plan.tessaloom, p2 = ")));
    EXPECT_EQ(log.lines().filter(QStringLiteral("delete src rError")).size(), 1);
    EXPECT_TRUE(QFileInfo::exists(document.path()));
}

TEST_F(UploadFailureTest, leavesTheWorkingFolderAloneWithoutADocument)
{
    ASSERT_TRUE(QDir::setCurrent(document.folder()));
    panel->setNewPathFile(std::nullopt, std::nullopt);
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("The operation couldn’t be completed. ((null) error 500.)"));
    EXPECT_TRUE(log.lines().contains(QStringLiteral("before delete src -> p1 = (null), p2 = (null)")));
    EXPECT_TRUE(QFileInfo::exists(document.path()));
}

TEST_F(UploadFailureTest, uploadsAgainAfterAFailure)
{
    answerUploadsWith(Fault().reset(Point::requestBody(1)));
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("The network connection was lost."));
    ui::click(sheet()->cancelButton());

    server.behave();
    const LoneDocument again("contents of the document\n");
    panel->setNewPathFile(again.path(), LoneDocument::name());
    upload();
    EXPECT_TRUE(ui::isShown(sheet()->uploadingView()));
    EXPECT_FALSE(hasFailed());

    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
    EXPECT_EQ(server.attachments("ABC-1").size(), 1U);
}

} // namespace
