#include "tests/client/tasks/TaskTest.h"

#include "client/JAController.h"
#include "platform/foundation/files/TemporaryDirectory.h"
#include "platform/foundation/loading/curl/TemporaryFile.h"
#include "tests/kit/OldFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;
using testing::IsEmpty;

const Match contents = Match::on("*/secure/attachment/*");

/// An attachment on its way to the private folder, without a window.
class FetchTaskTest : public TaskTest
{
protected:
    const std::string large = std::string(1 << 20, 'w');
};

TEST_F(FetchTaskTest, bringsTheAttachmentUnderItsOwnName)
{
    store("other.tessaloom", "silk");
    const auto id = store("plan.tessaloom", "wool");
    const auto task = fetch(id);
    EXPECT_THAT(ends, IsEmpty());

    ASSERT_TRUE(waitForEnds());
    EXPECT_TRUE(task->isOver());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].error, std::nullopt);
    EXPECT_EQ(contentsOf(ends[0].path), QByteArray("wool"));
    EXPECT_EQ(QFileInfo(ends[0].path).fileName(), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    EXPECT_EQ(ends[0].attachmentId.toStdString(), std::to_string(id));
    EXPECT_EQ(ends[0].attachmentName, QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(ends[0].size, 4);
}

TEST_F(FetchTaskTest, tellsHowFarItIs)
{
    fetch(store("plan.tessaloom", large));
    EXPECT_THAT(steps, IsEmpty());
    ASSERT_TRUE(waitForEnds());

    ASSERT_THAT(steps, testing::Not(IsEmpty()));
    EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end()));
    EXPECT_EQ(steps.back(), (std::pair<qint64, qint64>(1 << 20, 1 << 20)));
}

TEST_F(FetchTaskTest, tellsOfASingleByte)
{
    fetch(store("plan.tessaloom", "w"));
    ASSERT_TRUE(waitForEnds());

    EXPECT_THAT(steps, testing::ElementsAre(std::pair<qint64, qint64>(1, 1)));
}

TEST_F(FetchTaskTest, bringsAnAttachmentOfAnyName)
{
    fetch(store("notes.txt", "wool"));

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(QFileInfo(ends[0].path).fileName(), QStringLiteral("notes.txt"));
}

TEST_F(FetchTaskTest, bringsAnEmptyAttachment)
{
    fetch(store("plan.tessaloom", ""));

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(contentsOf(ends[0].path), QByteArray(""));
}

TEST_F(FetchTaskTest, aNameIsNeverAPath)
{
    fetch(store("../../over\there.tessaloom", "wool"));

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(QFileInfo(QFileInfo(ends[0].path).path()).path(), tljira::temporaryDirectory());
    EXPECT_EQ(QFileInfo(ends[0].path).fileName(), QStringLiteral(".._.._over_here.tessaloom"));
    EXPECT_EQ(ends[0].attachmentName, QStringLiteral("../../over\there.tessaloom"));
}

TEST_F(FetchTaskTest, leavesWhatAnEarlierOneBroughtAlone)
{
    const auto id = store("plan.tessaloom", "wool");
    fetch(id);
    ASSERT_TRUE(waitForEnds());
    fetch(id);
    ASSERT_TRUE(waitForEnds(2));

    EXPECT_NE(ends[0].path, ends[1].path);
    for (const Result& end : ends)
        EXPECT_EQ(contentsOf(end.path), QByteArray("wool"));
}

TEST_F(FetchTaskTest, twoRunSideBySide)
{
    const auto one = store("one.tessaloom", large);
    const auto other = store("other.tessaloom", std::string(1 << 19, 's'));
    server.misbehave(contents, Fault().hold(Point::responseBody(65536)));
    fetch(one);
    fetch(other);
    ASSERT_TRUE(waitForHeld(2));
    EXPECT_EQ(temporaryItems().filter(QStringLiteral("Fetched-")), QStringList());
    server.behave();
    steps.clear();
    server.release();
    ASSERT_TRUE(waitUntil([this] { return ends.size() == 2; }));

    for (const Result& end : ends) {
        const bool isOne = end.attachmentName == QStringLiteral("one.tessaloom");
        EXPECT_EQ(end.outcome, Outcome::Done);
        EXPECT_EQ(end.attachmentId.toStdString(), std::to_string(isOne ? one : other));
        EXPECT_EQ(contentsOf(end.path), isOne ? QByteArray(1 << 20, 'w') : QByteArray(1 << 19, 's'));
    }
    EXPECT_NE(ends[0].attachmentName, ends[1].attachmentName);
}

TEST_F(FetchTaskTest, goesOnWhereTheOneBesideItBreaks)
{
    server.misbehave(Match::on("*/one.tessaloom"), Fault().close(Point::responseBody(1 << 19)));
    server.misbehave(Match::on("*/other.tessaloom"), Fault().hold(Point::responseBody(1 << 19)));
    fetch(store("other.tessaloom", large));
    ASSERT_TRUE(waitForHeld());
    fetch(store("one.tessaloom", large));
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    server.release();

    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
    EXPECT_EQ(ends[1].attachmentName, QStringLiteral("other.tessaloom"));
}

TEST_F(FetchTaskTest, hasLetGoOfProgressWhenItTellsItsEnd)
{
    const auto mark = std::make_shared<int>();
    std::optional<long> holders;
    const auto id = QString::number(store("plan.tessaloom", "wool"));
    const auto task = TLJiraTask::fetch(
        QStringLiteral("ABC-1"), id, [&](const Result&) { holders = mark.use_count(); }, [mark](qint64, qint64) {});
    ASSERT_TRUE(waitUntil([&] { return holders.has_value(); }));

    EXPECT_EQ(holders, 1);
}

TEST_F(FetchTaskTest, letsGoOfWhatTheHostHandedInOnceItHasEnded)
{
    const auto mark = std::make_shared<int>();
    const auto id = QString::number(store("plan.tessaloom", "wool"));
    const auto task = TLJiraTask::fetch(
        QStringLiteral("ABC-1"), id, [this, mark](const Result& result) { ends.push_back(result); },
        [mark](qint64, qint64) {});
    ASSERT_TRUE(waitForEnds());

    EXPECT_EQ(mark.use_count(), 1);
}

TEST_F(FetchTaskTest, whatAKilledProcessLeavesOfItGoesLater)
{
    fetch(store("plan.tessaloom", "wool"));
    ASSERT_TRUE(waitForEnds());
    const QString newLocation = QStringLiteral("New location: ");
    const QStringList places = log.lines().filter(newLocation);
    ASSERT_EQ(places.size(), 1);
    const QString arrival = places[0].mid(newLocation.size());
    ASSERT_FALSE(QFileInfo::exists(arrival));
    writeFile(arrival, "wool");
    makeOlder(arrival, std::chrono::hours(25));
    tljira::TemporaryFile::removeLeftovers();

    EXPECT_FALSE(QFileInfo::exists(arrival));
    EXPECT_EQ(contentsOf(ends[0].path), QByteArray("wool"));
}

// Another login meanwhile.

TEST_F(FetchTaskTest, doesNotGoOnWithTheSessionOfAnotherServer)
{
    // One that went on might be stopped before its request has left.
    constexpr std::size_t many = 12;
    const auto id = store("plan.tessaloom", "wool");
    server.misbehave(Match::on("*/issue/*"), Fault().hold(Point::responseHead(0)));
    for (std::size_t i = 0; i < many; ++i)
        fetch(id);
    ASSERT_TRUE(waitForHeld(many));
    signIn(Jira::otherAddress);
    ASSERT_TRUE(waitForEnds());
    ASSERT_EQ(ends[0].outcome, Outcome::Done);
    server.release();

    ASSERT_TRUE(waitForEnds(1 + many));
    for (std::size_t i = 1; i <= many; ++i) {
        EXPECT_EQ(ends[i].outcome, Outcome::Failed);
        ASSERT_TRUE(ends[i].error.has_value());
        EXPECT_EQ(ends[i].error->code, 401);
        EXPECT_EQ(ends[i].error->localizedDescription(),
                  QStringLiteral("The program is no longer signed in to this server."));
    }
    EXPECT_TRUE(waitForNoConnection());
    EXPECT_THAT(server.requests("*/secure/*"), IsEmpty());
    EXPECT_EQ(temporaryItems(), QStringList());
}

TEST_F(FetchTaskTest, goesOnWithANewSessionOfItsServer)
{
    const auto id = store("plan.tessaloom", "wool");
    server.misbehave(Match::on("*/issue/*"), Fault().hold(Point::responseHead(0)));
    fetch(id);
    ASSERT_TRUE(waitForHeld());
    signIn(QStringLiteral("HTTP://jira.example.test"));
    ASSERT_TRUE(waitForEnds());
    ASSERT_EQ(ends[0].outcome, Outcome::Done);
    server.release();

    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
}

TEST_F(FetchTaskTest, goesOnWhileAnotherAddressHasOnlyBeenTyped)
{
    const auto id = store("plan.tessaloom", "wool");
    server.misbehave(Match::on("*/issue/*"), Fault().hold(Point::responseHead(0)));
    fetch(id);
    ASSERT_TRUE(waitForHeld());
    JAController::sharedInstance()->setHost(Jira::otherAddress);
    server.release();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
}

// What goes wrong: nothing lies anywhere then.

class FetchTaskFailure : public FetchTaskTest
{
protected:
    void expectFailure()
    {
        ASSERT_TRUE(waitForEnds());
        EXPECT_EQ(ends[0].outcome, Outcome::Failed);
        ASSERT_TRUE(ends[0].error.has_value());
        EXPECT_EQ(ends[0].path, QString());
        EXPECT_EQ(ends[0].size, 0);
        EXPECT_EQ(temporaryItems(), QStringList());
    }

    std::string errorText() const { return ends.at(0).error->localizedDescription().toStdString(); }
};

TEST_F(FetchTaskFailure, whereTheIssueIsNotThere)
{
    fetch(7, QStringLiteral("NO-1"));
    expectFailure();
    EXPECT_EQ(ends[0].error->code, 404);
    EXPECT_EQ(ends[0].serverSentence, QStringLiteral("Issue Does Not Exist"));
}

TEST_F(FetchTaskFailure, whereTheIssueHasNoSuchAttachment)
{
    store("plan.tessaloom", "wool");
    fetch(7);
    expectFailure();
    EXPECT_EQ(errorText(), "ABC-1 has no attachment “7”.");
}

TEST_F(FetchTaskFailure, withoutAKey)
{
    fetch(7, QString());
    expectFailure();
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(FetchTaskFailure, whereAPageComesInPlaceOfTheIssue)
{
    server.misbehave(Match::on("*/issue/*"), Fault().status(200, "<html>log in</html>", "text/html"));
    fetch(7);
    expectFailure();
    EXPECT_EQ(errorText(), "The server’s answer is no issue.");
}

TEST_F(FetchTaskFailure, whereTheServerSendsSomethingElse)
{
    const auto id = store("plan.tessaloom", large);
    server.misbehave(contents, Fault().status(403, R"({"errorMessages":["You may not."]})", "application/json"));
    fetch(id);
    expectFailure();
    EXPECT_EQ(errorText(), "The server sent something else than the document: 34 bytes instead of 1048576.");
    EXPECT_EQ(ends[0].serverSentence, QStringLiteral("You may not."));
}

TEST_F(FetchTaskFailure, repeatsWhatTheServerSaysUnlessThatIsLong)
{
    const auto id = store("plan.tessaloom", large);
    const std::string sentence = R"({"errorMessages":["You may not."]})";
    for (const std::size_t size : {65536U, 65537U}) {
        ends.clear();
        server.behave();
        const std::string answer = sentence + std::string(size - sentence.size(), ' ');
        server.misbehave(contents, Fault().status(403, answer, "application/json"));
        fetch(id);
        expectFailure();
        EXPECT_EQ(ends[0].serverSentence, size > 65536U ? QString() : QStringLiteral("You may not."));
    }
}

TEST_F(FetchTaskFailure, whereTheServerSendsSomethingInPlaceOfNothing)
{
    const auto id = store("plan.tessaloom", "");
    server.misbehave(contents, Fault().status(403, "You may not."));
    fetch(id);
    expectFailure();
}

TEST_F(FetchTaskFailure, whereTheServerSendsTooMuch)
{
    const auto id = store("plan.tessaloom", "wool");
    server.misbehave(contents, Fault().status(200, large).hold(Point::responseBody(1 << 19)));
    fetch(id);
    // Nobody waits for the rest.
    expectFailure();
    EXPECT_EQ(errorText(), "The server sent more than the 4 bytes that the document has.");
    EXPECT_THAT(steps, testing::Each(testing::Pair(testing::Le(4), 4)));
    EXPECT_TRUE(waitForNoConnection());
}

TEST_F(FetchTaskFailure, whereTheConnectionBreaks)
{
    const auto id = store("plan.tessaloom", large);
    server.misbehave(contents, Fault().close(Point::responseBody(1 << 19)));
    fetch(id);
    expectFailure();
    EXPECT_EQ(ends[0].error->domain, QString::fromLatin1(tljira::URLErrorDomain));
}

TEST_F(FetchTaskFailure, whereThereIsNoPlaceForIt)
{
    const auto id = store("plan.tessaloom", large);
    server.misbehave(contents, Fault().hold(Point::responseBody(1 << 19)));
    fetch(id);
    ASSERT_TRUE(waitForHeld());
    ASSERT_TRUE(waitUntil([] { return !temporaryItems().isEmpty(); }));
    const QByteArray before = qgetenv("TMPDIR");
    const QString noFolder = QDir::homePath() + QStringLiteral("/file");
    writeFile(noFolder, "not a folder");
    qputenv("TMPDIR", QFile::encodeName(noFolder));
    server.release();
    ASSERT_TRUE(waitForEnds());
    qputenv("TMPDIR", before);
    expectFailure();
    EXPECT_THAT(errorText(), testing::StartsWith("The document could not be put in its place: "));
}

TEST_F(FetchTaskFailure, whereItIsRemovedOnItsWay)
{
    const auto id = store("plan.tessaloom", large);
    server.misbehave(contents, Fault().hold(Point::responseBody(1 << 19)));
    fetch(id);
    ASSERT_TRUE(waitForHeld());
    ASSERT_TRUE(waitUntil([] { return !temporaryItems().isEmpty(); }));
    ASSERT_TRUE(QDir(tljira::temporaryDirectory()).removeRecursively());
    server.release();
    expectFailure();
    EXPECT_THAT(errorText(), testing::StartsWith("The document could not be put in its place: "));
}

// Cancelling.

class FetchTaskPhase : public FetchTaskTest, public testing::WithParamInterface<const char*>
{
protected:
    std::shared_ptr<TLJiraTask> holdThere()
    {
        const auto id = store("plan.tessaloom", large);
        const std::string phase = GetParam();
        if (phase == "issue")
            server.misbehave(Match::on("*/issue/*"), Fault().hold(Point::responseHead(0)));
        else if (phase == "head")
            server.misbehave(contents, Fault().hold(Point::responseHead(0)));
        else if (phase == "body")
            server.misbehave(contents, Fault().hold(Point::responseBody(1 << 19)));
        const auto task = fetch(id);
        EXPECT_TRUE(phase == "call" || waitForHeld());
        return task;
    }
};

TEST_P(FetchTaskPhase, isOneInWhichItCanBeCancelled)
{
    const auto task = holdThere();
    task->cancel();
    EXPECT_TRUE(task->isOver());
    EXPECT_THAT(ends, IsEmpty());

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].error, std::nullopt);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    EXPECT_EQ(ends[0].path, QString());
    EXPECT_EQ(temporaryItems(), QStringList());
    EXPECT_TRUE(waitForNoConnection());
}

TEST_F(FetchTaskTest, leavesNothingWhereItIsCancelledWhenAllHasCome)
{
    const auto id = store("plan.tessaloom", large);
    std::shared_ptr<TLJiraTask> task;
    task =
        TLJiraTask::fetch(QStringLiteral("ABC-1"), QString::number(id), remember(), [&](qint64 bytes, qint64 ofBytes) {
            if (bytes == ofBytes)
                task->cancel();
        });

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(temporaryItems(), QStringList());
}

TEST_P(FetchTaskPhase, isOneInWhichItsObjectCanBeLetGo)
{
    holdThere();
    server.behave();
    server.release();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
}

TEST_P(FetchTaskPhase, isOneInWhichTheApplicationCanQuit)
{
    holdThere();
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    QCoreApplication::exec();

    ASSERT_EQ(ends.size(), 1U);
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(temporaryItems(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(Phases, FetchTaskPhase, testing::Values("call", "issue", "head", "body"));

} // namespace
