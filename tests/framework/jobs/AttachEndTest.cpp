#include "tests/framework/jobs/JobsTest.h"

#include <QApplication>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using testing::ElementsAre;
using testing::IsEmpty;

/// Each end of a job for attaching comes once.
class AttachEndTest : public JobsTest
{
protected:
    /// The upload that the server holds was broken off, and did not end by its time-out.
    void expectTheUploadIsCancelled()
    {
        ASSERT_TRUE(waitForAttempt());
        EXPECT_EQ(sheet().errorMessage()->text(), QStringLiteral("cancelled"));
        expectNothingAttached();
    }

    /// Though the server is free to take it.
    void expectNothingAttached()
    {
        server.release();
        ASSERT_TRUE(waitUntil([this] { return server.finishedRequestCount() == server.requestCount(); }));
        EXPECT_THAT(attached(), IsEmpty());
    }
};

TEST_F(AttachEndTest, closedByTheTitleBarBeforeAnythingWasSent)
{
    open();
    closeByTitleBar(*upload);
    EXPECT_THAT(ends, IsEmpty());

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
}

TEST_F(AttachEndTest, closedByItsCancelButton)
{
    open();
    ui::click(panel().cancelButton());

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
}

TEST_F(AttachEndTest, closedByTheTitleBarWhileUploading)
{
    openAndHold();
    closeByTitleBar(*upload);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].error, std::nullopt);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    expectNothingAttached();
    EXPECT_FALSE(upload->window()->isVisible());
}

TEST_F(AttachEndTest, failedWithTheServersSentence)
{
    server.allowAttachments(false);
    open();
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeSheet();
    closeByTitleBar(*upload);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->code, 403);
    EXPECT_NE(ends[0].serverSentence, QString());
    EXPECT_THAT(sheet().errorView()->findChild<QLabel*>(QStringLiteral("serverSentence"))->text().toStdString(),
                testing::HasSubstr(ends[0].serverSentence.toStdString()));
    EXPECT_EQ(ends[0].size, 0);
}

TEST_F(AttachEndTest, failedInTheTransport)
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().reset(standin::Point::responseHead(0)));
    open();
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeByTitleBar(*upload);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->domain, QString::fromLatin1(tljira::URLErrorDomain));
}

TEST_F(AttachEndTest, failedWhereAnEndIsReportedTwice)
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().status(200, "<html>a page</html>", "text/html"));
    open();
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeByTitleBar(*upload);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->domain, QStringLiteral("Fatal error"));
}

TEST_F(AttachEndTest, aSuccessCountsMoreThanAFailureAfterIt)
{
    open();
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeSheet();
    pressUpload(QStringLiteral("NO-1"));
    ASSERT_TRUE(waitForAttempt());
    closeByTitleBar(*upload);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    EXPECT_EQ(ends[0].size, bytes.size());
}

TEST_F(AttachEndTest, aCancelAfterAFailureIsACancel)
{
    open();
    pressUpload(QStringLiteral("NO-1"));
    ASSERT_TRUE(waitForAttempt());
    closeSheet();
    server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(standin::Point::responseHead(0)));
    pressUpload();
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    closeByTitleBar(*upload);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].error, std::nullopt);
}

TEST_F(AttachEndTest, doneWithoutAnythingThatTheServerNames)
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().status(200, "[]", "application/json"));
    open();
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeByTitleBar(*upload);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].attachmentId, QString());
    EXPECT_EQ(ends[0].size, 0);
}

TEST_F(AttachEndTest, itsParentIsDestroyedInMidTransfer)
{
    openAndHold();
    host.reset();

    EXPECT_FALSE(upload->window()->isVisible());
    EXPECT_THAT(ends, IsEmpty());
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    expectTheUploadIsCancelled();
}

TEST_F(AttachEndTest, itsParentIsDestroyedAfterItWasDone)
{
    open();
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    host.reset();

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
}

TEST_F(AttachEndTest, itsParentIsDestroyedWhileTheEndIsOnItsWay)
{
    open();
    closeByTitleBar(*upload);
    host.reset();

    ASSERT_TRUE(waitForEnd());
}

TEST_F(AttachEndTest, theApplicationIsAboutToQuitInMidTransfer)
{
    openAndHold();
    QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
    QApplication::exec();

    ASSERT_EQ(ends.size(), 1U);
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    ASSERT_TRUE(waitForEnd());
}

TEST_F(AttachEndTest, hasNobodyWhoHearsIt)
{
    ASSERT_TRUE(TLJiraJobs::attach({QStringLiteral("plan.tessaloom"), bytes}, host.get()));
    upload = std::dynamic_pointer_cast<TLJiraUpload>(client->delegate());
    closeByTitleBar(*upload);
    drainMainQueue();

    EXPECT_THAT(ends, IsEmpty());
    EXPECT_TRUE(attach({QStringLiteral("plan.tessaloom"), bytes}));
}

TEST_F(AttachEndTest, beginsTheNextJobInTheCallback)
{
    bool isAccepted = false;
    ASSERT_TRUE(TLJiraJobs::attach({QStringLiteral("plan.tessaloom"), bytes}, host.get(), [&](const Result&) {
        isAccepted = attach({QStringLiteral("next.tessaloom"), bytes});
    }));
    closeByTitleBar(*std::dynamic_pointer_cast<TLJiraUpload>(client->delegate()));

    ASSERT_TRUE(waitUntil([&] { return isAccepted; }));
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());
}

// Options.

TEST_F(AttachEndTest, staysOpenWhenItIsDoneUnlessTheHostSaysOtherwise)
{
    open();
    pressUpload();
    ASSERT_TRUE(waitForAttempt());

    // Another window of the host closes by itself later.
    EXPECT_FALSE(waitUntil([this] { return !upload->window()->isVisible(); }, std::chrono::seconds(4)));
    EXPECT_THAT(ends, IsEmpty());
}

TEST_F(AttachEndTest, closesByItselfWhenItIsDone)
{
    open(TLJiraJobs::CloseWhenDone);
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    // Not at once: the user sees how it ended.
    EXPECT_TRUE(upload->window()->isVisible());
    EXPECT_EQ(sheet().sizeLabel()->text(), QStringLiteral("DONE"));

    ASSERT_TRUE(waitForEnd());
    EXPECT_FALSE(upload->window()->isVisible());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
}

TEST_F(AttachEndTest, doesNotCloseByItselfWhenItHasFailed)
{
    open(TLJiraJobs::CloseWhenDone);
    pressUpload(QStringLiteral("NO-1"));
    ASSERT_TRUE(waitForAttempt());

    EXPECT_FALSE(waitUntil([this] { return !upload->window()->isVisible(); }, std::chrono::seconds(4)));
    EXPECT_TRUE(ui::isOnScreen(sheet().errorView()));
}

TEST_F(AttachEndTest, doesNotCloseByItselfWhileItsUserLooksAtALaterFailure)
{
    open(TLJiraJobs::CloseWhenDone);
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeSheet();
    pressUpload(QStringLiteral("NO-1"));
    ASSERT_TRUE(waitForAttempt());

    EXPECT_FALSE(waitUntil([this] { return !upload->window()->isVisible(); }, std::chrono::seconds(4)));
    EXPECT_TRUE(ui::isOnScreen(sheet().errorView()));
}

TEST_F(AttachEndTest, goesOnWithoutItsWindowWhereTheHostSaysSo)
{
    openAndHold(TLJiraJobs::UploadOutlivesWindow);
    closeByTitleBar(*upload);
    drainMainQueue();
    EXPECT_FALSE(upload->window()->isVisible());
    EXPECT_TRUE(panel().isUploading());
    EXPECT_THAT(ends, IsEmpty());

    server.release();
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_THAT(attached(), ElementsAre(heldBytes.toStdString()));
}

TEST_F(AttachEndTest, endsNoOtherWindowsRunWhereItEndsWithoutItsWindow)
{
    openAndHold(TLJiraJobs::UploadOutlivesWindow);
    closeByTitleBar(*upload);

    EXPECT_TRUE(runsOnDuring([this] {
        server.release();
        EXPECT_TRUE(waitForEnd());
    }));
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
}

TEST_F(AttachEndTest, endsNoOtherWindowsRunWithItsParent)
{
    open();

    EXPECT_TRUE(runsOnDuring([this] {
        host.reset();
        EXPECT_TRUE(waitForEnd());
    }));
}

TEST_F(AttachEndTest, comesBackIntoSightWhereItGoesOnWithoutItsWindow)
{
    openAndHold(TLJiraJobs::UploadOutlivesWindow);
    closeByTitleBar(*upload);

    EXPECT_FALSE(attach({QStringLiteral("other.tessaloom"), "silk"}));
    EXPECT_TRUE(upload->window()->isVisible());
    EXPECT_TRUE(ui::isOnScreen(sheet().cancelButton()));
    ui::click(sheet().cancelButton());
    ASSERT_TRUE(waitForAttempt());
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
}

TEST_F(AttachEndTest, endsWithItsParentAlsoWhereItGoesOnWithoutItsWindow)
{
    openAndHold(TLJiraJobs::UploadOutlivesWindow);
    host.reset();

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    expectTheUploadIsCancelled();
}

TEST_F(AttachEndTest, itsParentIsDestroyedWhileItGoesOnWithoutItsWindow)
{
    openAndHold(TLJiraJobs::UploadOutlivesWindow);
    closeByTitleBar(*upload);
    drainMainQueue();
    host.reset();

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    expectTheUploadIsCancelled();
}

TEST_F(AttachEndTest, theApplicationIsAboutToQuitWhileItGoesOnWithoutItsWindow)
{
    openAndHold(TLJiraJobs::UploadOutlivesWindow);
    closeByTitleBar(*upload);
    drainMainQueue();
    QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
    QApplication::exec();

    ASSERT_EQ(ends.size(), 1U);
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    expectTheUploadIsCancelled();
}

TEST_F(AttachEndTest, refusesNobodyWhoQuitsWhereItGoesOnWithoutItsWindow)
{
    openAndHold(TLJiraJobs::UploadOutlivesWindow);
    QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
    QApplication::exec();

    ASSERT_EQ(ends.size(), 1U);
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
}

} // namespace
