#include "platform/foundation/files/FileManager.h"
#include "tests/client/ClientTest.h"
#include "tests/kit/SmallDisk.h"
#include "tests/kit/WithoutPrivileges.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <csignal>
#include <functional>
#include <sys/resource.h>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;
using testing::HasSubstr;
using namespace std::chrono_literals;

/// What callers of a download hear when server, network or the disk misbehave, and what then lies on the disk.
class JAControllerDownloadFaultsTest : public tests::ClientTest
{
protected:
    static constexpr qint64 size = 4 << 20;

    void SetUp() override
    {
        logIn();
        const auto id = server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .syntheticSize = size});
        link = QStringLiteral("http://jira.example.test/secure/attachment/%1/plan.tessaloom").arg(id);
        writeFile("saved", "old bytes");
        // A downloaded file is put here until it is complete.
        QDir().mkpath(path("temporary"));
        qputenv("TMPDIR", path("temporary").toUtf8());
    }

    static QByteArray attachedBytes() { return QByteArray::fromStdString(standin::Server::pattern(0, size)); }

    void start()
    {
        events.clear();
        client->downloadFile(link, downloadCallBack(), path("saved"));
    }

    void download(const Fault& fault)
    {
        server.behave();
        server.misbehave(Match::on("/secure/*"), fault);
        start();
        EXPECT_TRUE(waitForEvents(1));
    }

    void expectOldFileAndNoLeftovers()
    {
        EXPECT_EQ(tests::contentsOf(path("saved")), QByteArray("old bytes"));
        EXPECT_EQ(tljira::FileManager::filesBelowPath(path("temporary")), QStringList());
    }

    bool hasWholeFile() const
    {
        const QDir temporary(path("temporary"));
        return std::ranges::any_of(tljira::FileManager::filesBelowPath(temporary.path()), [&](const QString& name) {
            return QFileInfo(temporary.filePath(name)).size() == size;
        });
    }

    static bool waitWithoutEvents(const std::function<bool()>& condition)
    {
        QElapsedTimer elapsed;
        elapsed.start();
        while (!condition() && !elapsed.hasExpired(20'000))
            QThread::usleep(200);
        return condition();
    }

    std::string logText() const { return log.lines().join(u'\n').toStdString(); }

    QString link;
};

TEST_F(JAControllerDownloadFaultsTest, aConnectionThatIsResetBeforeTheRequestIsRead)
{
    client->setSession(tljira::URLSession::sessionWithConfiguration(client->session()->configuration(), client));
    server.resetConnections(1);
    start();
    ASSERT_TRUE(waitForEvents(1));
    // Whether the connection is seen to stand before it goes is a matter of luck.
    EXPECT_THAT(events, ElementsAre(testing::AnyOf("(0, 0, NSURLErrorDomain -1005, NO)",
                                                   "(0, 0, NSURLErrorDomain -1004, NO)")));
    expectOldFileAndNoLeftovers();
}

TEST_F(JAControllerDownloadFaultsTest, aConnectionThatEndsInHeadOrBody)
{
    for (const Point point : {Point::responseHead(0), Point::responseHead(20), Point::responseBody(0),
                              Point::responseBody(size / 2), Point::responseBody(size - 1)}) {
        download(Fault().reset(point));
        EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -1005, NO)"));
        download(Fault().close(point));
        EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -1005, NO)"));
        expectOldFileAndNoLeftovers();
    }
}

TEST_F(JAControllerDownloadFaultsTest, aBodyThatIsShorterThanAnnounced)
{
    download(Fault().announce(1));
    EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -1005, NO)"));
    expectOldFileAndNoLeftovers();
}

TEST_F(JAControllerDownloadFaultsTest, aBodyInChunksThatIsCutShort)
{
    for (const int missing : {5, 6, 5000}) {
        download(Fault().chunked(missing));
        EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -1005, NO)")) << missing;
        expectOldFileAndNoLeftovers();
    }
}

TEST_F(JAControllerDownloadFaultsTest, aBodyInGzipThatIsCutShort)
{
    for (const int missing : {1, 8, 5000}) {
        download(Fault().gzip(missing));
        EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -1016, NO)")) << missing;
        expectOldFileAndNoLeftovers();
    }
}

TEST_F(JAControllerDownloadFaultsTest, aBodyWhoseFormIsUnusualButWhole)
{
    for (const Fault& fault : {Fault().chunked(), Fault().gzip(), Fault().withoutLength()}) {
        download(fault);
        EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
        EXPECT_EQ(tests::contentsOf(path("saved")), attachedBytes());
    }
}

TEST_F(JAControllerDownloadFaultsTest, aLoginPageIsTakenForTheFile)
{
    const std::string page = "<html>Please log in</html>";
    download(Fault().status(200, page, "text/html"));
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_EQ(tests::contentsOf(path("saved")), QByteArray::fromStdString(page));
}

TEST_F(JAControllerDownloadFaultsTest, aRedirectIsFollowedButTheSessionStaysWithItsHost)
{
    download(Fault().redirect("http://other.example.test/store/plan.tessaloom"));
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    const auto requests = server.requests("/store/plan.tessaloom");
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].headerCount("Cookie"), 0);
}

TEST_F(JAControllerDownloadFaultsTest, aLoopOfRedirects)
{
    download(Fault().redirectToItself());
    EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -1007, NO)"));
    expectOldFileAndNoLeftovers();
}

TEST_F(JAControllerDownloadFaultsTest, isCancelledInEveryPhase)
{
    for (const Point point : {Point::responseHead(0), Point::responseHead(20), Point::responseBody(0),
                              Point::responseBody(size / 2), Point::responseBody(size - 1)}) {
        server.behave();
        server.misbehave(Match::next(), Fault().hold(point));
        start();
        ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
        client->cancelDownload();
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -999, NO)"));
        EXPECT_TRUE(tests::waitUntil([this] { return server.heldCount() == 0; }));
        expectOldFileAndNoLeftovers();
    }
    start();
    client->cancelDownload();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -999, NO)"));
    expectOldFileAndNoLeftovers();
}

TEST_F(JAControllerDownloadFaultsTest, isCancelledWhenAllBytesHaveComeButNobodyHasHeard)
{
    const std::size_t finishedBefore = server.finishedRequestCount();
    start();
    // The main thread, which would hear of the end, stays here until all of the file is on this computer.
    ASSERT_TRUE(waitWithoutEvents([&] { return server.finishedRequestCount() > finishedBefore && hasWholeFile(); }));
    EXPECT_THAT(events, testing::IsEmpty());
    client->cancelDownload();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -999, NO)"));
    expectOldFileAndNoLeftovers();
}

TEST_F(JAControllerDownloadFaultsTest, isCancelledByItsOwnCallback)
{
    client->downloadFile(
        link,
        [this](qint64 count1, qint64 count2, const auto& newError, bool finished) {
            if (count1 > 0 && !finished)
                client->cancelDownload();
            else
                downloadCallBack()(count1, count2, newError, finished);
        },
        path("saved"));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(0, 0, NSURLErrorDomain -999, NO)"));
    expectOldFileAndNoLeftovers();
}

TEST_F(JAControllerDownloadFaultsTest, aDestinationThatIsAFolderIsReplaced)
{
    ASSERT_TRUE(QFile::remove(path("saved")));
    ASSERT_TRUE(QDir().mkpath(path("saved/inner")));
    writeFile("saved/inner/file", "bytes");
    start();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_EQ(tests::contentsOf(path("saved")), attachedBytes());
}

TEST_F(JAControllerDownloadFaultsTest, aDestinationThatIsALinkIsReplacedAndItsTargetIsNot)
{
    writeFile("target", "target bytes");
    ASSERT_TRUE(QFile::remove(path("saved")));
    ASSERT_TRUE(QFile::link(path("target"), path("saved")));
    start();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(tests::contentsOf(path("saved")), attachedBytes());
    EXPECT_EQ(tests::contentsOf(path("target")), QByteArray("target bytes"));
}

TEST_F(JAControllerDownloadFaultsTest, aDestinationInAFolderThatIsMissingShowsOnlyInTheLog)
{
    client->downloadFile(link, downloadCallBack(), path("missing/saved"));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_THAT(logText(), HasSubstr("Move item error: Error Domain=NSCocoaErrorDomain Code=4 "));
    expectOldFileAndNoLeftovers();
}

TEST_F(JAControllerDownloadFaultsTest, aDestinationInAReadOnlyFolderShowsOnlyInTheLog)
{
    QDir().mkdir(path("closed"));
    writeFile("closed/saved", "kept bytes");
    QFile::setPermissions(path("closed"), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    {
        const tests::WithoutPrivileges permissionsCount;
        client->downloadFile(link, downloadCallBack(), path("closed/saved"));
        ASSERT_TRUE(waitForEvents(1));
    }
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_THAT(logText(), HasSubstr("Remove item error: Error Domain=NSCocoaErrorDomain Code=513 "));
    EXPECT_THAT(logText(), HasSubstr("Move item error: Error Domain=NSCocoaErrorDomain Code=516 "));
    EXPECT_EQ(tests::contentsOf(path("closed/saved")), QByteArray("kept bytes"));
    expectOldFileAndNoLeftovers();
    QFile::setPermissions(path("closed"), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

TEST_F(JAControllerDownloadFaultsTest, anEmptyDestinationShowsOnlyInTheLog)
{
    client->downloadFile(link, downloadCallBack(), QString());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_THAT(logText(), HasSubstr("Move item error: Error Domain=NSCocoaErrorDomain "));
    expectOldFileAndNoLeftovers();
}

TEST_F(JAControllerDownloadFaultsTest, aFileThatMayNotGrowSoLargeFailsTheDownload)
{
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlim_t before = std::exchange(limit.rlim_cur, 1 << 20);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    start();
    const bool ended = waitForEvents(1);
    limit.rlim_cur = before;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    ASSERT_TRUE(ended);
    EXPECT_THAT(events, ElementsAre(testing::StartsWith("(0, 0, NSCocoaErrorDomain ")));
    expectOldFileAndNoLeftovers();
}

TEST_F(JAControllerDownloadFaultsTest, aDiskThatIsFullFailsTheDownload)
{
    const tests::SmallDisk disk(path("temporary"), 1024);
    if (!disk.isThere())
        GTEST_SKIP() << "this process may not mount a file system";
    client = JAController::init();
    start();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(0, 0, NSCocoaErrorDomain 640, NO)"));
    expectOldFileAndNoLeftovers();
}

TEST_F(JAControllerDownloadFaultsTest, aDestinationOnADiskThatIsFullShowsOnlyInTheLog)
{
    const tests::SmallDisk disk(path("volume"), 1024);
    if (!disk.isThere())
        GTEST_SKIP() << "this process may not mount a file system";
    client->downloadFile(link, downloadCallBack(), path("volume/saved"));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(100, 100, no error, YES)"));
    EXPECT_THAT(logText(), HasSubstr("Move item error: Error Domain=NSCocoaErrorDomain Code=640 "));
    EXPECT_EQ(tljira::FileManager::filesBelowPath(path("volume")), QStringList());
    expectOldFileAndNoLeftovers();
}

} // namespace
