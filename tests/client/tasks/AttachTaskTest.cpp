#include "client/tasks/FileDocument.h"
#include "tests/client/tasks/TaskTest.h"
#include "tests/kit/HeldGlobalQueue.h"
#include "tests/kit/HeldSystem.h"

#include "platform/foundation/files/TemporaryDirectory.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <stdexcept>
#include <thread>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

const QString name = QStringLiteral("plan.tessaloom");

/// A document on its way to an issue, without a window.
class AttachTaskTest : public TaskTest
{
protected:
    void holdUploads(Point point) { server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(point)); }

    std::shared_ptr<TLJiraTask> write(const TLJiraTask::Document::Writer& writer)
    {
        return TLJiraTask::attach({name, writer}, QStringLiteral("ABC-1"), remember(), follow());
    }

    /// Its disk does not give the file's bytes until HeldFile::release().
    std::shared_ptr<TLJiraTask> attachHeldFile()
    {
        writeFile(file, "warp");
        heldFile.emplace(file, 0);
        return TLJiraTask::attach(client::FileDocument::of(name, file), QStringLiteral("ABC-1"), remember());
    }

    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("document"));
    std::optional<HeldFile> heldFile;
    /// More than what lies in the system's hands while a server does not read.
    const QByteArray large = QByteArray(16 << 20, 'w');
};

TEST_F(AttachTaskTest, sendsTheDocumentAndTellsWhatTheServerMadeOfIt)
{
    const auto task = attach("warp");
    EXPECT_THAT(ends, IsEmpty());
    EXPECT_FALSE(task->isOver());

    ASSERT_TRUE(waitForEnds());
    EXPECT_TRUE(task->isOver());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].error, std::nullopt);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    EXPECT_EQ(ends[0].attachmentId.toStdString(), std::to_string(server.attachments("ABC-1").at(0).id));
    EXPECT_EQ(ends[0].attachmentName, name);
    EXPECT_EQ(ends[0].size, 4);
    EXPECT_EQ(ends[0].path, QString());
    EXPECT_THAT(attached(), ElementsAre("warp"));
}

TEST_F(AttachTaskTest, waitsForASlowFileOfTheHostWithoutHoldingItUp)
{
    attachHeldFile();
    // As the host goes on.
    ASSERT_TRUE(waitUntil([] { return HeldFile::waiting() == 1; }));
    EXPECT_THAT(ends, IsEmpty());

    HeldFile::release();
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_THAT(attached(), ElementsAre("warp"));
}

TEST_F(AttachTaskTest, isCancelledWhileItWaitsForASlowFileOfTheHost)
{
    const auto task = attachHeldFile();
    ASSERT_TRUE(waitUntil([] { return HeldFile::waiting() == 1; }));
    task->cancel();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    HeldFile::release();
    ASSERT_TRUE(waitUntil([] { return temporaryItems().isEmpty(); }));
    EXPECT_THAT(attached(), IsEmpty());
}

TEST_F(AttachTaskTest, tellsHowFarItIs)
{
    attach(large);
    EXPECT_THAT(steps, IsEmpty());
    ASSERT_TRUE(waitUntil([this] { return !ends.empty(); }));
    const auto beforeItsEnd = steps;
    drainMainQueue();

    EXPECT_EQ(steps, beforeItsEnd);
    ASSERT_THAT(steps, testing::Not(IsEmpty()));
    EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end()));
    EXPECT_GT(steps.back().second, large.size());
    EXPECT_EQ(steps.back().first, steps.back().second);
}

TEST_F(AttachTaskTest, asksAWriterOnceBeforeTheCallReturns)
{
    int calls = 0;
    write([&calls](QIODevice& device) {
        ++calls;
        return device.write("weft") == 4;
    });
    EXPECT_EQ(calls, 1);

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(calls, 1);
    EXPECT_THAT(attached(), ElementsAre("weft"));
}

TEST_F(AttachTaskTest, itsCopyIsGoneWhenItHasEnded)
{
    holdUploads(Point::requestBody(65536));
    attach(large);
    ASSERT_TRUE(waitForHeld());
    EXPECT_EQ(temporaryItems(), QStringList());

    server.release();
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(temporaryItems(), QStringList());
}

TEST_F(AttachTaskTest, whatAKilledProcessLeftGoesWithTheFirstOne)
{
    const QString left = tljira::temporaryDirectory() + QStringLiteral("/Upload-left");
    ASSERT_TRUE(QDir().mkdir(left));
    attach("warp");

    ASSERT_TRUE(waitForEnds());
    EXPECT_TRUE(waitUntil([&] { return !QFileInfo::exists(left); }));
}

TEST_F(AttachTaskTest, sendsNothingWithTheSessionOfAnotherServer)
{
    HeldGlobalQueue slowDisk;
    attach("warp");
    signIn(Jira::otherAddress);
    ASSERT_TRUE(waitForEnds());
    ASSERT_EQ(ends[0].outcome, Outcome::Done);
    server.forgetRequests();
    slowDisk.letGo();

    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(ends[1].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[1].error.has_value());
    EXPECT_EQ(ends[1].error->code, 401);
    EXPECT_THAT(server.requests(), IsEmpty());
    EXPECT_EQ(temporaryItems(), QStringList());
}

TEST_F(AttachTaskTest, takesTheKeyAsTheUserTypedIt)
{
    attach("warp", QStringLiteral(" ABC-1 "));

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral(" ABC-1 "));
}

// What goes wrong.

TEST_F(AttachTaskTest, failsWithTheErrorAndTheServersSentence)
{
    attach("warp", QStringLiteral("NO-1"));

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->code, 404);
    EXPECT_EQ(ends[0].serverSentence, QStringLiteral("Issue Does Not Exist"));
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("NO-1"));
    EXPECT_EQ(ends[0].size, 0);
}

TEST_F(AttachTaskTest, failsOnceWhereAnEndIsReportedTwice)
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().status(200, "<html>a page</html>", "text/html"));
    attach("warp");

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->domain, QStringLiteral("Fatal error"));
}

TEST_F(AttachTaskTest, failsInTheTransport)
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().reset(Point::responseHead(0)));
    attach("warp");

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->domain, QString::fromLatin1(tljira::URLErrorDomain));
}

TEST_F(AttachTaskTest, sendsNothingWhereTheWriterFails)
{
    write([](QIODevice& device) { return device.write("half") < 0; });
    EXPECT_THAT(ends, IsEmpty());

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->localizedDescription(),
              QStringLiteral("The document could not be copied: The program could not write it."));
    EXPECT_EQ(server.requests().size(), 0U);
    EXPECT_EQ(temporaryItems(), QStringList());
}

TEST_F(AttachTaskTest, sendsNothingWhereTheWriterThrows)
{
    write([](QIODevice&) -> bool { throw std::runtime_error("the loom is jammed"); });

    ASSERT_TRUE(waitForEnds());
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->localizedDescription(),
              QStringLiteral("The document could not be copied: the loom is jammed"));
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(AttachTaskTest, sendsNothingWhereThereIsNoPlaceForTheCopy)
{
    const QString noFolder = QDir::homePath() + QStringLiteral("/file");
    writeFile(noFolder, "not a folder");
    qputenv("TMPDIR", QFile::encodeName(noFolder));
    attach("warp");

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->domain, QString::fromLatin1(tljira::CocoaErrorDomain));
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(AttachTaskTest, sendsNothingWithoutAKey)
{
    attach("warp", QStringLiteral(" "));
    EXPECT_THAT(ends, IsEmpty());

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(ends[0].error->localizedDescription(), QStringLiteral("The key of an issue is missing."));
    EXPECT_EQ(server.requests().size(), 0U);
}

class AttachTaskName : public AttachTaskTest, public testing::WithParamInterface<const char*>
{
};

TEST_P(AttachTaskName, thatWouldBeMoreThanANameIsNotSent)
{
    TLJiraTask::attach({QString::fromLatin1(GetParam()), "warp"}, QStringLiteral("ABC-1"), remember());

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(AttachTaskTest, asksNoWriterForWhatIsNotSent)
{
    bool isAsked = false;
    const TLJiraDocument::Writer writer = [&isAsked](QIODevice&) {
        isAsked = true;
        return true;
    };
    TLJiraTask::attach({QStringLiteral("plan.tessaloom"), writer}, QString(), remember());
    TLJiraTask::attach({QString(), writer}, QStringLiteral("ABC-1"), remember());
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_FALSE(isAsked);
}

INSTANTIATE_TEST_SUITE_P(Names, AttachTaskName, testing::Values("", " ", "a\r\nContent-Type: text/html", "a\tb"));

// Cancelling.

TEST_F(AttachTaskTest, isCancelledBeforeAnythingIsCopied)
{
    HeldGlobalQueue held;
    QByteArray bytes(65536, 'w');
    const auto task = attach(bytes);
    task->cancel();
    EXPECT_TRUE(task->isOver());
    EXPECT_THAT(ends, IsEmpty());

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    held.letGo();
    // The copy is made all the same, and then let go.
    ASSERT_TRUE(waitUntil([&] { return bytes.isDetached(); }));
    EXPECT_EQ(temporaryItems(), QStringList());
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(AttachTaskTest, isCancelledWhileItIsSent)
{
    holdUploads(Point::requestBody(65536));
    const auto task = attach(large);
    ASSERT_TRUE(waitForHeld());
    task->cancel();
    steps.clear();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].error, std::nullopt);
    EXPECT_THAT(steps, IsEmpty());
    server.release();
    ASSERT_TRUE(waitForNoConnection());
    EXPECT_THAT(attached(), IsEmpty());
}

TEST_F(AttachTaskTest, isCancelledWhileTheServerThinks)
{
    holdUploads(Point::responseHead(0));
    const auto task = attach("warp");
    ASSERT_TRUE(waitForHeld());
    task->cancel();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_TRUE(waitForNoConnection());
}

TEST_F(AttachTaskTest, isCancelledFromItsProgress)
{
    std::shared_ptr<TLJiraTask> task;
    task = TLJiraTask::attach({name, large}, QStringLiteral("ABC-1"), remember(), [&](qint64 bytes, qint64 ofBytes) {
        steps.emplace_back(bytes, ofBytes);
        task->cancel();
    });

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(steps.size(), 1U);
}

TEST_F(AttachTaskTest, tellsNothingOfWhatWasSentBeforeItWasCancelled)
{
    holdUploads(Point::responseHead(0));
    std::shared_ptr<TLJiraTask> task;
    task = TLJiraTask::attach({name, large}, QStringLiteral("ABC-1"), remember(), [&](qint64 bytes, qint64 ofBytes) {
        steps.emplace_back(bytes, ofBytes);
        // The rest leaves meanwhile, and the news of it waits for the event loop.
        const QDeadlineTimer limit(std::chrono::seconds(60));
        while (server.heldCount() == 0 && !limit.hasExpired())
            std::this_thread::yield();
        task->cancel();
    });

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(steps.size(), 1U);
}

TEST_F(AttachTaskTest, aCancelAfterItsEndChangesNothing)
{
    const auto task = attach("warp");
    ASSERT_TRUE(waitForEnds());
    task->cancel();
    task->cancel();
    drainMainQueue();

    ASSERT_EQ(ends.size(), 1U);
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
}

TEST_F(AttachTaskTest, endsOnceHoweverOftenItIsCancelled)
{
    const auto task = attach(large);
    task->cancel();
    task->cancel();

    ASSERT_TRUE(waitForEnds());
}

// Lives.

TEST_F(AttachTaskTest, goesOnWhenItsObjectIsLetGo)
{
    holdUploads(Point::requestBody(65536));
    auto task = attach(large);
    ASSERT_TRUE(waitForHeld());
    task.reset();
    server.release();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_THAT(attached(), ElementsAre(large.toStdString()));
}

TEST_F(AttachTaskTest, letsGoOfWhatTheHostHandedInOnceItHasEnded)
{
    const auto mark = std::make_shared<int>();
    const auto task = TLJiraTask::attach(
        {name, [mark](QIODevice& device) { return device.write("warp") == 4; }}, QStringLiteral("ABC-1"),
        [this, mark](const Result& result) { ends.push_back(result); }, [mark](qint64, qint64) {});
    ASSERT_TRUE(waitForEnds());

    EXPECT_EQ(mark.use_count(), 1);
}

TEST_F(AttachTaskTest, hasLetGoOfWriterAndProgressWhenItTellsItsEnd)
{
    const auto mark = std::make_shared<int>();
    std::optional<long> holders;
    const auto task = TLJiraTask::attach(
        {name, [mark](QIODevice& device) { return device.write("warp") == 4; }}, QStringLiteral("ABC-1"),
        [&](const Result&) { holders = mark.use_count(); }, [mark](qint64, qint64) {});
    ASSERT_TRUE(waitUntil([&] { return holders.has_value(); }));

    EXPECT_EQ(holders, 1);
}

TEST_F(AttachTaskTest, tellsNobodyWhereNobodyWantsToHear)
{
    TLJiraTask::attach({name, "warp"}, QStringLiteral("ABC-1"), {});

    EXPECT_TRUE(waitUntil([this] { return attached().size() == 1; }));
}

TEST_F(AttachTaskTest, beginsTheNextOneInTheCallback)
{
    TLJiraTask::attach({name, "warp"}, QStringLiteral("ABC-1"), [this](const Result&) { attach("weft"); });

    ASSERT_TRUE(waitForEnds());
    EXPECT_THAT(attached(), ElementsAre("warp", "weft"));
}

TEST_F(AttachTaskTest, twoRunSideBySide)
{
    server.addIssue("ABC-2");
    holdUploads(Point::requestBody(65536));
    attach(large);
    const auto other = attach(large + large, QStringLiteral("ABC-2"));
    ASSERT_TRUE(waitForHeld(2));
    other->cancel();
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-2"));
    ends.clear();
    server.release();

    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    EXPECT_EQ(ends[0].size, large.size());
}

TEST_F(AttachTaskTest, eachOfTwoIsToldOfItsOwnAttachment)
{
    server.addIssue("ABC-2");
    holdUploads(Point::responseHead(0));
    attach("warp");
    attach("silk thread", QStringLiteral("ABC-2"));
    ASSERT_TRUE(waitForHeld(2));
    server.release();
    ASSERT_TRUE(waitUntil([this] { return ends.size() == 2; }));

    EXPECT_THAT(
        (std::vector<std::pair<QString, qint64>>{{ends[0].issueKey, ends[0].size}, {ends[1].issueKey, ends[1].size}}),
        UnorderedElementsAre(std::pair<QString, qint64>(QStringLiteral("ABC-1"), 4),
                             std::pair<QString, qint64>(QStringLiteral("ABC-2"), 11)));
}

TEST_F(AttachTaskTest, endsWhenTheApplicationQuits)
{
    holdUploads(Point::requestBody(65536));
    attach(large);
    ASSERT_TRUE(waitForHeld());
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    QCoreApplication::exec();

    ASSERT_EQ(ends.size(), 1U);
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    ASSERT_TRUE(waitForEnds());
    server.release();
    EXPECT_TRUE(waitForNoConnection());
    EXPECT_THAT(attached(), IsEmpty());
}

} // namespace
