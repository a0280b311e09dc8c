#include "tests/kit/HeldSystem.h"
#include "tests/platform/foundation/SessionTest.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;
using tests::HeldDownloads;
using tests::HeldFile;
using tests::HeldLookUp;

/// A name server or a disk that does not answer holds up the one request that needs it.
class URLSessionWaitingTest : public tests::SessionTest
{
protected:
    static constexpr qint64 fileSize = 8 << 20;
    static constexpr double hurried = 0.5;

    URLSessionWaitingTest()
        : SessionTest(recordingWholeBodies())
    {
        server.misbehave(Match(), Fault().status(200, "body"));
    }

    static standin::Options recordingWholeBodies()
    {
        standin::Options options;
        options.recordedBodyBytes = 2 * fileSize;
        return options;
    }

    static tljira::URLRequest unansweredRequest(double timeout = 60)
    {
        return tljira::URLRequest(QStringLiteral("http://unanswered.example.test/"),
                                  tljira::URLRequestCachePolicy::UseProtocolCachePolicy, timeout);
    }

    QByteArray bytesOfFile() const
    {
        QByteArray bytes(fileSize, Qt::Uninitialized);
        for (qsizetype i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<char>(i * 2654435761u >> 24);
        return bytes;
    }

    tljira::URLRequest requestWithFile(double timeout = 60)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytesOfFile()), fileSize);
        file.close();
        tljira::URLRequest request = requestFor("upload", timeout);
        request.HTTPMethod = QStringLiteral("POST");
        request.HTTPBody = tljira::Data(QByteArray("head "));
        request.HTTPBody->append(*tljira::Data::contentsOfFile(path)).append(QByteArray(" tail"));
        return request;
    }

    std::shared_ptr<tljira::URLSessionDataTask> startHeldLookUp()
    {
        const auto task = dataTask(unansweredRequest());
        task->resume();
        EXPECT_TRUE(tests::waitUntil([] { return HeldLookUp::waiting() == 1; }));
        return task;
    }

    std::shared_ptr<tljira::URLSessionDataTask> startHeldUpload()
    {
        const auto task = dataTask(requestWithFile());
        heldFile.emplace(path, fileSize / 2);
        task->resume();
        EXPECT_TRUE(tests::waitUntil([] { return HeldFile::waiting() == 1; }));
        return task;
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file"));
    std::optional<HeldFile> heldFile;
};

TEST_F(URLSessionWaitingTest, cancelIsReportedWhileTheNameServerIsSilent)
{
    const HeldLookUp held("unanswered.example.test");
    startHeldLookUp()->cancel();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    EXPECT_THAT(events, ElementsAre("no response", "end -999"));
    EXPECT_EQ(HeldLookUp::waiting(), 1);
}

TEST_F(URLSessionWaitingTest, theTimeOutEndsALookUp)
{
    const HeldLookUp held("unanswered.example.test");
    run(unansweredRequest(hurried));
    EXPECT_THAT(events, ElementsAre("no response", "end -1001"));
    EXPECT_TRUE(tests::waitUntil([] { return HeldLookUp::waiting() == 1; }));
}

TEST_F(URLSessionWaitingTest, otherRequestsGoOnBesideALookUpAndAfterItWasCancelled)
{
    const HeldLookUp held("unanswered.example.test");
    const auto task = startHeldLookUp();
    run(requestFor("x"));
    EXPECT_THAT(events, ElementsAre("200", "end"));
    events.clear();
    task->cancel();
    dataTask(requestFor("x"))->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 3; }));
    EXPECT_THAT(events, ElementsAre("no response", "end -999", "200", "end"));
    EXPECT_EQ(HeldLookUp::waiting(), 1);
}

TEST_F(URLSessionWaitingTest, theEndOfASessionDoesNotWaitForTheNameServer)
{
    const HeldLookUp held("unanswered.example.test");
    startHeldLookUp();
    session.reset();
    EXPECT_EQ(HeldLookUp::waiting(), 1);
}

TEST_F(URLSessionWaitingTest, aFileArrivesWholeWhenItsDiskStoppedOnTheWay)
{
    startHeldUpload();
    EXPECT_EQ(ends, 0u);
    HeldFile::release();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    EXPECT_THAT(events, ElementsAre("200", "end"));
    EXPECT_TRUE(QByteArray::fromStdString(server.lastRequest().body) == "head " + bytesOfFile() + " tail");
}

TEST_F(URLSessionWaitingTest, aFileArrivesWholeWhereverItsDiskHasToBeAsked)
{
    const tljira::URLRequest request = requestWithFile();
    for (const qint64 from : {qint64(0), qint64(1), qint64(123'457), fileSize / 2, fileSize - 1}) {
        SCOPED_TRACE(from);
        const tests::ColdFile cold(path, from);
        events.clear();
        run(request);
        EXPECT_THAT(events, ElementsAre("200", "end"));
        EXPECT_TRUE(QByteArray::fromStdString(server.lastRequest().body) == "head " + bytesOfFile() + " tail");
    }
}

TEST_F(URLSessionWaitingTest, otherRequestsGoOnBesideAFileWhoseDiskIsSilent)
{
    startHeldUpload();
    run(requestFor("x"));
    EXPECT_THAT(events, ElementsAre("200", "end"));
    EXPECT_EQ(HeldFile::waiting(), 1);
}

TEST_F(URLSessionWaitingTest, whatWasReadBeforeTheDiskFellSilentIsSent)
{
    startHeldUpload();
    const qint64 read = fileSize / 2;
    EXPECT_TRUE(tests::waitUntil([&] { return !sent.empty() && sent.back().first >= read - (256 << 10); }));
    EXPECT_EQ(HeldFile::waiting(), 1);
}

TEST_F(URLSessionWaitingTest, cancelIsReportedWhileTheDiskIsSilent)
{
    startHeldUpload()->cancel();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    EXPECT_THAT(events, ElementsAre("no response", "end -999"));
    EXPECT_EQ(HeldFile::waiting(), 1);
}

/// A fast server keeps libcurl busy for a long time at a stretch, and a slow disk makes that longer still.
TEST_F(URLSessionWaitingTest, nothingMoreIsSavedOfADownloadThatWasCancelled)
{
    server.behave();
    server.misbehave(Match(), Fault().status(200, std::string(64 << 20, 'x')));
    const HeldDownloads held;
    const auto task = session->downloadTaskWithRequest(requestFor("x"));
    task->resume();
    ASSERT_TRUE(tests::waitUntil([] { return HeldDownloads::waiting() == 1; }));
    ASSERT_TRUE(tests::waitUntil([this] { return server.bodyBytesSent() > 2 << 20; }));
    task->cancel();
    HeldDownloads::release();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    EXPECT_THAT(events, ElementsAre("end -999"));
    EXPECT_LE(HeldDownloads::takenSinceRelease(), 512 << 10);
}

TEST_F(URLSessionWaitingTest, theTimeOutEndsAnUploadWhoseDiskIsSilent)
{
    const tljira::URLRequest request = requestWithFile(hurried);
    heldFile.emplace(path, fileSize / 2);
    run(request);
    EXPECT_THAT(events, ElementsAre("no response", "end -1001"));
    EXPECT_TRUE(tests::waitUntil([] { return HeldFile::waiting() == 1; }));
}

TEST_F(URLSessionWaitingTest, theEndOfASessionDoesNotWaitForTheDisk)
{
    startHeldUpload();
    session.reset();
    EXPECT_EQ(HeldFile::waiting(), 1);
}

} // namespace
