#include "tests/framework/jobs/JobsTest.h"

#include "platform/foundation/files/TemporaryDirectory.h"
#include "platform/toolkit/windows/Application.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>
#include <QWindow>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using testing::IsEmpty;

class FetchTest : public JobsTest
{
protected:
    std::int64_t store(const std::string& name, const std::string& contents)
    {
        return server.addAttachment("ABC-1", {.fileName = name, .bytes = contents});
    }

    void openListOfHeldDownload()
    {
        store("plan.tessaloom", std::string(200'000, 'w'));
        server.misbehave(Match::on("*/secure/attachment/*"), Fault().hold(standin::Point::responseBody(100'000)));
        ASSERT_TRUE(fetch());
        openList();
        pressDownload();
        ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    }

    bool waitForFailure() const
    {
        return waitUntil([this] {
            return client->downloadTask() && client->downloadTask()->hasEnded() &&
                   ui::isOnScreen(list().downloadError());
        });
    }

    /// Does this in the modal run, once the panel can be used.
    void whileWaiting(const std::function<void()>& steps)
    {
        // Not 0: events that are posted already would not be handed out while one of them waits for the others.
        QTimer::singleShot(1, [this, steps] {
            entry = std::dynamic_pointer_cast<JMWindowController>(client->delegate());
            ASSERT_NE(entry, nullptr);
            ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(fetchPanel().getAttachButton()); }));
            steps();
        });
    }
};

TEST_F(FetchTest, bringsTheDocumentUnderItsOwnNameAndTellsWhichItIs)
{
    const auto id = store("plan.tessaloom", "wool");
    fetchFirst();

    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(contentsOf(ends[0].path), QByteArray("wool"));
    EXPECT_EQ(QFileInfo(ends[0].path).fileName(), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    EXPECT_EQ(ends[0].attachmentId.toStdString(), std::to_string(id));
    EXPECT_EQ(ends[0].attachmentName, QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(ends[0].size, 4);
    EXPECT_EQ(ends[0].error, std::nullopt);
    EXPECT_FALSE(entry->window()->isVisible());
}

TEST_F(FetchTest, leavesTheDocumentOfAnEarlierFetchAlone)
{
    store("plan.tessaloom", "wool");
    fetchFirst();
    fetchFirst();

    ASSERT_EQ(ends.size(), 2U);
    EXPECT_NE(ends[0].path, ends[1].path);
    for (const Result& end : ends)
        EXPECT_EQ(contentsOf(end.path), QByteArray("wool"));
}

TEST_F(FetchTest, theDocumentIsAloneInAFolderThatNobodyElseEnters)
{
    store("plan.tessaloom", "wool");
    fetchFirst();

    const QFileInfo folder(QFileInfo(ends[0].path).path());
    EXPECT_EQ(folder.path(), tljira::temporaryDirectory());
    EXPECT_EQ(QDir(folder.filePath()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              QStringList(QStringLiteral("plan.tessaloom")));
    EXPECT_EQ(folder.permissions() & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser),
              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(FetchTest, aNameIsNeverAPath)
{
    store("../../over\there.tessaloom", "wool");
    fetchFirst();

    EXPECT_EQ(QFileInfo(QFileInfo(ends[0].path).path()).path(), tljira::temporaryDirectory());
    EXPECT_EQ(QFileInfo(ends[0].path).fileName(), QStringLiteral(".._.._over_here.tessaloom"));
    EXPECT_EQ(ends[0].attachmentName, QStringLiteral("../../over\there.tessaloom"));
    EXPECT_EQ(contentsOf(ends[0].path), QByteArray("wool"));
}

TEST_F(FetchTest, isADialogOfTheParentsWindow)
{
    QWidget other;
    other.show();
    ASSERT_TRUE(fetch());

    EXPECT_EQ(entry->window()->widget()->windowHandle()->transientParent(), host->windowHandle());
    closeByTitleBar(*entry);
    ASSERT_TRUE(waitForEnd());
}

TEST_F(FetchTest, isKeptOutOfNothingByADialogThatIsItsParent)
{
    host->hide();
    host->setWindowModality(Qt::ApplicationModal);
    host->show();
    ASSERT_TRUE(fetch());
    store("plan.tessaloom", "wool");
    openList();

    EXPECT_EQ(entry->window()->widget()->windowHandle()->transientParent(), host->windowHandle());
}

TEST_F(FetchTest, comesToTheFrontWhenItIsAskedForAgain)
{
    ASSERT_TRUE(fetch());
    const auto first = entry;
    first->window()->widget()->showMinimized();

    EXPECT_FALSE(fetch());
    EXPECT_EQ(TLJiraJobs::fetchAndWait(host.get()).has_value(), false);
    EXPECT_EQ(client->delegate(), first);
    EXPECT_FALSE(first->window()->widget()->isMinimized());
    closeByTitleBar(*first);
    ASSERT_TRUE(waitForEnd());
}

TEST_F(FetchTest, standsBesideAWindowForAttaching)
{
    open();
    ASSERT_TRUE(fetch());
    store("plan.tessaloom", "wool");
    openList();
    EXPECT_TRUE(upload->window()->isVisible());
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());
    EXPECT_TRUE(entry->window()->isVisible());
    closeByTitleBar(*entry);

    ASSERT_TRUE(waitForEnd(2));
}

// Each end comes once.

TEST_F(FetchTest, endsWhenItIsClosedByTheTitleBar)
{
    ASSERT_TRUE(fetch());
    closeByTitleBar(*entry);
    EXPECT_THAT(ends, IsEmpty());

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].path, QString());
}

TEST_F(FetchTest, endsWhenItsCancelButtonIsPressed)
{
    ASSERT_TRUE(fetch());
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(fetchPanel().getAttachButton()); }));
    ui::press(entry->window()->widget(), Qt::Key_Escape);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
}

TEST_F(FetchTest, endsWhenItIsClosedInMidTransfer)
{
    openListOfHeldDownload();
    closeByTitleBar(*entry);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    EXPECT_THAT(foldersNamed(QStringLiteral("Fetched-")), IsEmpty());
}

TEST_F(FetchTest, handsTheDocumentOverWhenItIsClosedAfterTheDownload)
{
    store("plan.tessaloom", "wool");
    ASSERT_TRUE(fetch());
    openList();
    pressDownload();
    ASSERT_TRUE(waitForDownload());
    closeByTitleBar(*entry);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(contentsOf(ends[0].path), QByteArray("wool"));
}

TEST_F(FetchTest, failsWithTheErrorOfTheTransport)
{
    store("plan.tessaloom", "wool");
    server.misbehave(Match::on("*/secure/attachment/*"), Fault().reset(standin::Point::responseHead(0)));
    ASSERT_TRUE(fetch());
    openList();
    pressDownload();
    ASSERT_TRUE(waitForFailure());
    closeByTitleBar(*entry);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->localizedDescription(), list().downloadError()->text());
}

TEST_F(FetchTest, failsWhereTheServerSendsSomethingElse)
{
    store("plan.tessaloom", "wool");
    server.misbehave(Match::on("*/secure/attachment/*"),
                     Fault().status(403, R"({"errorMessages":["You may not."]})", "application/json"));
    ASSERT_TRUE(fetch());
    openList();
    pressDownload();
    ASSERT_TRUE(waitForDownload());
    leaveList();

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->localizedDescription(),
              QStringLiteral("The server sent something else than the document: 34 bytes instead of 4."));
    EXPECT_EQ(ends[0].serverSentence, QStringLiteral("You may not."));
    EXPECT_EQ(ends[0].path, QString());
    EXPECT_THAT(foldersNamed(QStringLiteral("Fetched-")), IsEmpty());
}

TEST_F(FetchTest, failsWhereTheServerSendsSomethingInPlaceOfNothing)
{
    store("plan.tessaloom", "");
    server.misbehave(Match::on("*/secure/attachment/*").once(),
                     Fault().status(200, "<html>Log in</html>", "text/html"));
    ASSERT_TRUE(fetch());
    openList();
    pressDownload();
    ASSERT_TRUE(waitForDownload());
    leaveList();

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    EXPECT_EQ(ends[0].error.value_or(tljira::Error()).localizedDescription(),
              QStringLiteral("The server sent something else than the document: 19 bytes instead of 0."));
    EXPECT_THAT(foldersNamed(QStringLiteral("Fetched-")), IsEmpty());
}

TEST_F(FetchTest, bringsAnEmptyDocument)
{
    store("plan.tessaloom", "");
    fetchFirst();
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(contentsOf(ends[0].path), QByteArray(""));
}

TEST_F(FetchTest, aRetryAfterAFailureIsDone)
{
    store("plan.tessaloom", "wool");
    server.misbehave(Match::on("*/secure/attachment/*").once(), Fault().close(standin::Point::responseBody(2)));
    ASSERT_TRUE(fetch());
    openList();
    pressDownload();
    ASSERT_TRUE(waitForFailure());
    leaveList();
    ASSERT_TRUE(waitUntil([this] { return list().window()->sheetParent() == nullptr; }));
    openList();
    pressDownload();
    ASSERT_TRUE(waitForDownload());
    leaveList();

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].error, std::nullopt);
}

TEST_F(FetchTest, endsWithItsParent)
{
    openListOfHeldDownload();
    host.reset();

    EXPECT_FALSE(entry->window()->isVisible());
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
}

TEST_F(FetchTest, endsWhenTheApplicationQuits)
{
    openListOfHeldDownload();
    QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
    QApplication::exec();

    ASSERT_EQ(ends.size(), 1U);
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    ASSERT_TRUE(waitForEnd());
}

TEST_F(FetchTest, closesByItselfWhenItIsDoneWhereTheHostSaysSo)
{
    store("plan.tessaloom", "wool");
    ASSERT_TRUE(fetch(TLJiraJobs::CloseWhenDone));
    openList();
    pressDownload();
    ASSERT_TRUE(waitForDownload());
    EXPECT_TRUE(entry->window()->isVisible());

    ASSERT_TRUE(waitForEnd());
    EXPECT_FALSE(entry->window()->isVisible());
    EXPECT_EQ(contentsOf(ends[0].path), QByteArray("wool"));
}

TEST_F(FetchTest, endsNoOtherWindowsRunWhenItClosesByItself)
{
    store("plan.tessaloom", "wool");
    ASSERT_TRUE(fetch(TLJiraJobs::CloseWhenDone));
    openList();
    pressDownload();
    ASSERT_TRUE(waitForDownload());

    EXPECT_TRUE(runsOnDuring([this] {
        // It waits, and would have closed by now.
        EXPECT_FALSE(waitUntil([this] { return !entry->window()->isVisible(); }, std::chrono::seconds(4)));
    }));
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
}

TEST_F(FetchTest, closesByItselfWhileItsCallerWaits)
{
    store("plan.tessaloom", "wool");
    whileWaiting([this] {
        openList();
        pressDownload();
    });
    const auto result = TLJiraJobs::fetchAndWait(host.get(), TLJiraJobs::CloseWhenDone);

    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->outcome, Outcome::Done);
}

TEST_F(FetchTest, staysOpenWhenItIsDoneUnlessTheHostSaysOtherwise)
{
    store("plan.tessaloom", "wool");
    ASSERT_TRUE(fetch());
    openList();
    pressDownload();
    ASSERT_TRUE(waitForDownload());

    EXPECT_FALSE(waitUntil([this] { return !entry->window()->isVisible(); }, std::chrono::seconds(4)));
}

// The form that waits.

TEST_F(FetchTest, waitsForTheDocument)
{
    store("plan.tessaloom", "wool");
    whileWaiting([this] {
        EXPECT_EQ(tljira::Application::modalWindow(), entry->window());
        EXPECT_EQ(entry->window()->widget()->windowHandle()->transientParent(), host->windowHandle());
        openList();
        pressDownload();
        ASSERT_TRUE(waitForDownload());
        leaveList();
    });
    const auto result = TLJiraJobs::fetchAndWait(host.get());

    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->outcome, Outcome::Done);
    EXPECT_EQ(contentsOf(result->path), QByteArray("wool"));
    EXPECT_EQ(tljira::Application::modalWindow(), nullptr);
}

TEST_F(FetchTest, waitsUntilItIsClosed)
{
    whileWaiting([this] { closeByTitleBar(*entry); });
    const auto result = TLJiraJobs::fetchAndWait(host.get());

    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->outcome, Outcome::Cancelled);
}

TEST_F(FetchTest, goesOnWaitingWhenAnotherWindowCloses)
{
    // One that is no job's: it ends the run as it closes.
    const auto other = TLJiraUpload::init();
    other->showWindow();
    bool wasOpen = false;
    whileWaiting([&] {
        other->window()->close();
        QTimer::singleShot(1, [&] {
            wasOpen =
                ui::isOnScreen(entry->window()->widget()) && tljira::Application::modalWindow() == entry->window();
            closeByTitleBar(*entry);
        });
    });
    const auto result = TLJiraJobs::fetchAndWait(host.get());

    EXPECT_TRUE(wasOpen);
    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->outcome, Outcome::Cancelled);
}

TEST_F(FetchTest, waitsNoLongerThanItsParentLives)
{
    whileWaiting([this] { host.reset(); });
    const auto result = TLJiraJobs::fetchAndWait(host.get());

    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->outcome, Outcome::Cancelled);
}

TEST_F(FetchTest, waitsNoLongerThanTheApplicationRuns)
{
    std::optional<Result> result;
    QTimer::singleShot(1, [&] {
        whileWaiting([] { QApplication::exit(); });
        result = TLJiraJobs::fetchAndWait(host.get());
    });
    QApplication::exec();

    ASSERT_TRUE(result.has_value());
    EXPECT_EQ(result->outcome, Outcome::Cancelled);
    EXPECT_FALSE(entry->window()->isVisible());
}

} // namespace
