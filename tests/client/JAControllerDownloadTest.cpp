#include "constants/JAConstants.h"
#include "tests/client/ClientTest.h"

#include <QDir>
#include <QRegularExpression>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;

class JAControllerDownloadTest : public tests::ClientTest
{
protected:
    static constexpr qint64 size = 3 << 20;

    void SetUp() override
    {
        logIn();
        const auto id = server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .syntheticSize = size});
        link = QStringLiteral("http://jira.example.test/secure/attachment/%1/plan.tessaloom").arg(id);
    }

    static QByteArray attachedBytes() { return QByteArray::fromStdString(standin::Server::pattern(0, size)); }

    void download() { client->downloadFile(link, downloadCallBack(), path("saved")); }

    void downloadAndHold(qint64 atByte)
    {
        server.misbehave(Match::next(), Fault().hold(Point::responseBody(atByte)));
        download();
        ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    }

    QString link;
};

TEST_F(JAControllerDownloadTest, putsTheFileInItsPlace)
{
    download();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_EQ(tests::contentsOf(path("saved")), attachedBytes());
    EXPECT_EQ(client->savePath(), path("saved"));
}

TEST_F(JAControllerDownloadTest, putsAFileOfNoBytesInItsPlace)
{
    const auto id = server.addAttachment("ABC-1", {.fileName = "empty"});
    link = QStringLiteral("http://jira.example.test/secure/attachment/%1/empty").arg(id);
    download();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_EQ(tests::contentsOf(path("saved")), QByteArray());
}

TEST_F(JAControllerDownloadTest, reportsPartsThatAddUpAndThenTheEnd)
{
    qint64 total = 0;
    bool isFinished = false;
    client->downloadFile(
        link,
        [&](qint64 count1, qint64 count2, const auto& newError, bool finished) {
            EXPECT_EQ(newError, std::nullopt);
            EXPECT_FALSE(isFinished);
            isFinished = finished;
            if (finished) {
                EXPECT_EQ(count1, 100);
                EXPECT_EQ(count2, 100);
                return;
            }
            EXPECT_GT(count1, 0);
            total += count1;
            EXPECT_EQ(count2, total);
        },
        path("saved"));
    ASSERT_TRUE(tests::waitUntil([&] { return isFinished; }));
    tests::drainMainQueue();
    EXPECT_EQ(total, size);
}

TEST_F(JAControllerDownloadTest, replacesTheFileThatIsThere)
{
    writeFile("saved", "old bytes");
    download();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(tests::contentsOf(path("saved")), attachedBytes());
}

TEST_F(JAControllerDownloadTest, reportsTheEndBeforeTheFileIsInItsPlace)
{
    writeFile("saved", "old bytes");
    std::optional<QByteArray> seen;
    client->downloadFile(
        link,
        [&](qint64, qint64, const auto&, bool finished) {
            if (!finished)
                return;
            seen = tests::contentsOf(path("saved"));
            events.push_back("finished");
        },
        path("saved"));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(seen, QByteArray("old bytes"));
    EXPECT_EQ(tests::contentsOf(path("saved")), attachedBytes());
}

TEST_F(JAControllerDownloadTest, letsTheCallbackGoAfterTheEnd)
{
    const auto token = std::make_shared<int>(0);
    const std::weak_ptr<int> observer = token;
    client->downloadFile(
        link,
        [this, token](qint64, qint64, const auto&, bool finished) { finished ? events.push_back("end") : void(); },
        path("saved"));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_FALSE(client->downloadCallBack());
    EXPECT_EQ(observer.use_count(), 1);
}

TEST_F(JAControllerDownloadTest, hasItsCallbackUntilTheFinishedCallReturns)
{
    bool wasSet = false;
    client->downloadFile(
        link,
        [&](qint64, qint64, const auto&, bool finished) {
            if (!finished)
                return;
            wasSet = bool(client->downloadCallBack());
            events.push_back("end");
        },
        path("saved"));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_TRUE(wasSet);
    EXPECT_FALSE(client->downloadCallBack());
}

/// The finished call is the last that a callback gets, also one that was set during it.
TEST_F(JAControllerDownloadTest, letsACallbackGoThatWasSetDuringTheFinishedCall)
{
    client->downloadFile(
        link,
        [&](qint64, qint64, const auto&, bool finished) {
            if (!finished)
                return;
            client->setDownloadCallBack(downloadCallBack());
            events.push_back("end");
        },
        path("saved"));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("end"));
    EXPECT_FALSE(client->downloadCallBack());
}

TEST_F(JAControllerDownloadTest, asksForAMinuteAndTheUsualCaching)
{
    download();
    const tljira::URLRequest& request = client->downloadTask()->originalRequest();
    EXPECT_EQ(request.timeoutInterval, 60.0);
    EXPECT_EQ(request.cachePolicy, tljira::URLRequestCachePolicy::UseProtocolCachePolicy);
    EXPECT_EQ(request.HTTPMethod, QStringLiteral("GET"));
    EXPECT_TRUE(waitForEvents(1));
}

TEST_F(JAControllerDownloadTest, writesItsLinesToTheLogInOrder)
{
    download();
    ASSERT_TRUE(waitForEvents(1));
    QStringList lines = log.lines();
    const QRegularExpression part(
        QStringLiteral("^didWriteData: [1-9]\\d*, totalBytesWritten \\d+, totalBytesExpectedToWrite: %1$").arg(size));
    const QString whole = QStringLiteral(", totalBytesWritten %1, totalBytesExpectedToWrite: %1").arg(size);
    ASSERT_GT(lines.size(), 6);
    for (const QString& line : lines.mid(0, lines.size() - 6))
        EXPECT_TRUE(part.match(line).hasMatch()) << line.toStdString();
    lines = lines.mid(lines.size() - 7);
    EXPECT_TRUE(lines[0].endsWith(whole)) << lines[0].toStdString();
    EXPECT_THAT(lines[1].toStdString(), testing::StartsWith("didFinishDownloadingToURL: /"));
    EXPECT_THAT(lines[2].toStdString(),
                testing::StartsWith("Remove item error: Error Domain=NSCocoaErrorDomain Code=4 "));
    EXPECT_EQ(lines[3], QStringLiteral("Move item error: (null)"));
    EXPECT_EQ(lines[4], QStringLiteral("New location: ") + path("saved"));
    EXPECT_EQ(lines[5], QStringLiteral("Move downloaded path error: “saved” couldn’t be removed."));
    EXPECT_EQ(lines[6], QStringLiteral("Error task: %1").arg(client->downloadTask()->hash()));
}

TEST_F(JAControllerDownloadTest, hasWrittenItsLastLineWhenTheCallerHearsOfTheEnd)
{
    server.misbehave(Match::next(), Fault().close(Point::responseBody(9)));
    QStringList linesAtTheEnd;
    client->downloadFile(
        link,
        [&](qint64, qint64, const auto& newError, bool) {
            if (newError)
                linesAtTheEnd = log.lines();
        },
        path("saved"));
    ASSERT_TRUE(tests::waitUntil([&] { return !linesAtTheEnd.isEmpty(); }));
    EXPECT_EQ(linesAtTheEnd.last(), QStringLiteral("Error task: %1").arg(client->downloadTask()->hash()));
}

TEST_F(JAControllerDownloadTest, hasWrittenWhereTheFileCameToWhenTheCallerHearsOfIt)
{
    std::string lastLine;
    client->downloadFile(
        link,
        [&](qint64, qint64, const auto&, bool finished) {
            if (finished)
                lastLine = log.lines().last().toStdString();
        },
        path("saved"));
    ASSERT_TRUE(tests::waitUntil([&] { return !lastLine.empty(); }));
    EXPECT_THAT(lastLine, testing::StartsWith("didFinishDownloadingToURL: /"));
}

TEST_F(JAControllerDownloadTest, writesALineForTheEndOfNoTask)
{
    tljira::URLSessionDelegate& sessionDelegate = *client;
    sessionDelegate.didCompleteWithError(nullptr, std::nullopt);
    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("Error task: 0")));
}

TEST_F(JAControllerDownloadTest, writesThePlaceholderForARemovalThatWorked)
{
    writeFile("saved", "old bytes");
    download();
    ASSERT_TRUE(waitForEvents(1));
    const QStringList lines = log.lines();
    EXPECT_TRUE(lines.contains(QStringLiteral("Remove item error: (null)")));
    EXPECT_TRUE(lines.contains(QStringLiteral("Move downloaded path error: (null)")));
}

TEST_F(JAControllerDownloadTest, writesALineForADownloadThatGoesOn)
{
    tljira::URLSessionDelegate& sessionDelegate = *client;
    sessionDelegate.didResumeAtOffset(nullptr, 17, 4711);
    EXPECT_EQ(log.lines(), QStringList(QStringLiteral("didResumeAtOffset: 17, expectedTotalBytes 4711")));
}

TEST_F(JAControllerDownloadTest, carriesTheSavedSession)
{
    download();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(server.lastRequest().header("Cookie"),
                testing::HasSubstr(JALoginObject::restoreSession()->toStdString()));
    EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 1);
    EXPECT_EQ(server.lastRequest().headerCount("Content-Type"), 0);
}

TEST_F(JAControllerDownloadTest, savesTheAnswerOfAnyStatusAsTheFile)
{
    for (int status : {401, 404, 500}) {
        events.clear();
        server.misbehave(Match::next(), Fault().status(status, "no such thing"));
        download();
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
        EXPECT_EQ(tests::contentsOf(path("saved")), QByteArray("no such thing"));
    }
}

TEST_F(JAControllerDownloadTest, toAFolderThatIsMissingFinishesAndShowsOnlyInTheLog)
{
    client->downloadFile(link, downloadCallBack(), path("missing/saved"));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_FALSE(QDir(path("missing")).exists());
    EXPECT_THAT(log.lines().join(u'\n').toStdString(),
                testing::HasSubstr("Move item error: Error Domain=NSCocoaErrorDomain Code=4 "));
}

TEST_F(JAControllerDownloadTest, tellsOfTheRemovalInItsLastLineAlsoWhenTheMoveFailed)
{
    client->downloadFile(link, downloadCallBack(), path("missing/saved"));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(log.lines().join(u'\n').toStdString(), testing::HasSubstr("Move item error: Error Domain="));
    EXPECT_TRUE(log.lines().contains(QStringLiteral("Move downloaded path error: “saved” couldn’t be removed.")));

    log.clear();
    writeFile("saved", "old bytes");
    client->downloadFile(link, downloadCallBack(), path("saved"));
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_TRUE(log.lines().contains(QStringLiteral("Move downloaded path error: (null)")));
}

TEST_F(JAControllerDownloadTest, cancelDoesNothingBeforeAnyDownload)
{
    client->cancelDownload();
    tests::drainMainQueue();
    EXPECT_TRUE(events.empty());
}

TEST_F(JAControllerDownloadTest, cancelUnderWayIsOneCallWithItsError)
{
    writeFile("saved", "old bytes");
    downloadAndHold(size / 2);
    client->cancelDownload();
    EXPECT_TRUE(events.empty());
    ASSERT_TRUE(waitForEvents(1));
    client->cancelDownload();
    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -999, NO)"));
    EXPECT_EQ(tests::contentsOf(path("saved")), QByteArray("old bytes"));
}

TEST_F(JAControllerDownloadTest, cancelDoesNothingAfterTheEnd)
{
    download();
    ASSERT_TRUE(waitForEvents(1));
    client->cancelDownload();
    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_EQ(tests::contentsOf(path("saved")), attachedBytes());
}

TEST_F(JAControllerDownloadTest, keepsTheCallbackOfAFailureForTheNextTaskThatEnds)
{
    downloadAndHold(size / 2);
    client->cancelDownload();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_TRUE(client->downloadCallBack());

    client->sendGetRequest(client->url(kCurrentUserPath), requestCallBack());
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -999, NO)", "(0, 0, no error, NO)", "200, no error"));
}

TEST_F(JAControllerDownloadTest, tellsTheCallbackOfOtherTasksThatEndMeanwhile)
{
    downloadAndHold(size / 2);
    client->sendGetRequest(client->url(kCurrentUserPath), nullptr);
    client->sendGetRequest(std::nullopt, nullptr);
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, testing::UnorderedElementsAre("(0, 0, no error, NO)", "(0, 0, NSURLErrorDomain -1002, NO)"));
    server.release();
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_EQ(events[2], "(100, 100, no error, YES)");
    EXPECT_EQ(tests::contentsOf(path("saved")), attachedBytes());
}

TEST_F(JAControllerDownloadTest, followsOneDownloadAtATime)
{
    downloadAndHold(size / 2);
    const auto older = client->downloadTask();
    std::vector<std::string> heardByNewer;
    server.misbehave(Match::next(), Fault().hold(Point::responseHead(0)));
    client->downloadFile(
        link,
        [&](qint64, qint64, const auto&, bool finished) {
            if (finished)
                heardByNewer.push_back("end");
        },
        path("newer"));
    EXPECT_NE(client->downloadTask(), older);
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 2; }));
    client->cancelDownload();
    server.release();
    ASSERT_TRUE(tests::waitUntil([&] { return !heardByNewer.empty(); }));
    EXPECT_TRUE(events.empty());
    EXPECT_FALSE(QFile::exists(path("saved")));
    EXPECT_EQ(tests::contentsOf(path("newer")), attachedBytes());
}

TEST_F(JAControllerDownloadTest, doesWithoutACallback)
{
    client->downloadFile(link, nullptr, path("saved"));
    EXPECT_TRUE(tests::waitUntil([this] { return QFile::exists(path("saved")); }));
    EXPECT_EQ(tests::contentsOf(path("saved")), attachedBytes());
}

TEST_F(JAControllerDownloadTest, failsWithoutAnAddress)
{
    client->downloadFile(std::nullopt, downloadCallBack(), path("saved"));
    EXPECT_TRUE(events.empty());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -1002, NO)"));
}

} // namespace
