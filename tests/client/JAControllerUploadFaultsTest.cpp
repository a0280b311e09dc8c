#include "tests/client/ClientTest.h"
#include "tests/kit/WithoutPrivileges.h"

#include <QDateTime>
#include <QDir>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;

/// What callers of an upload hear when server, network or the file misbehave, and what happens to the file: nothing.
class JAControllerUploadFaultsTest : public tests::ClientTest
{
protected:
    /// More than all buffers between client and server hold.
    static constexpr qint64 size = 32 << 20;

    JAControllerUploadFaultsTest()
        : source(writeFile("source", QByteArray(size, 'x')))
    {
    }

    void SetUp() override { logIn(); }

    void start(const QString& file)
    {
        events.clear();
        client->uploadFileInIssue(file, QStringLiteral("a.bin"), QStringLiteral("ABC-1"), completionCallBack(),
                                  nullptr);
    }

    void upload(const Fault& fault)
    {
        server.behave();
        server.misbehave(Match(), fault);
        start(source);
        EXPECT_TRUE(waitForEvents(1));
    }

    void uploadAndHold(Point point)
    {
        server.behave();
        server.misbehave(Match::next(), Fault().hold(point));
        start(source);
        ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    }

    /// Times of files may be counted in steps longer than a test takes.
    static void makeOld(const QString& path)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
    }

    static void writeInto(const QString& path, qint64 position)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.seek(position));
        ASSERT_EQ(file.write("other"), 5);
    }

    const QString source;
};

TEST_F(JAControllerUploadFaultsTest, aConnectionThatIsResetBeforeTheRequestIsRead)
{
    client->setSession(tljira::URLSession::sessionWithConfiguration(client->session()->configuration(), client));
    server.resetConnections(1);
    start(source);
    ASSERT_TRUE(waitForEvents(1));
    // Whether the connection is seen to stand before it goes is a matter of luck.
    EXPECT_THAT(events, ElementsAre(testing::AnyOf("NSURLErrorDomain -1005", "NSURLErrorDomain -1004")));
    EXPECT_TRUE(server.attachments("ABC-1").empty());
}

TEST_F(JAControllerUploadFaultsTest, aConnectionThatIsResetInTheBody)
{
    for (const qint64 bytes : {qint64(0), qint64(65536), size / 2}) {
        upload(Fault().reset(Point::requestBody(bytes)));
        EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -1005")) << bytes;
    }
    EXPECT_TRUE(server.attachments("ABC-1").empty());
    EXPECT_EQ(tests::contentsOf(source)->size(), size);
}

TEST_F(JAControllerUploadFaultsTest, aConnectionThatEndsInTheAnswer)
{
    for (const Point point : {Point::responseHead(0), Point::responseHead(20), Point::responseBody(3)}) {
        upload(Fault().reset(point));
        EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -1005"));
        upload(Fault().close(point));
        EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -1005"));
    }
}

/// Where a connection that was kept from an earlier request breaks, a client may be tempted to try again on a new one.
TEST_F(JAControllerUploadFaultsTest, aFileThatTheServerTookWithoutAnAnswerIsNotSentAgain)
{
    for (const Fault& fault : {Fault().close(Point::responseHead(0)), Fault().reset(Point::responseHead(0))}) {
        const std::size_t before = server.attachments("ABC-1").size();
        server.behave();
        client->sendGetRequest(client->url(QStringLiteral("rest/api/2/issue/ABC-1")), requestCallBack());
        events.clear();
        ASSERT_TRUE(waitForEvents(1));
        const std::size_t connections = server.connectionCount();
        server.misbehave(Match::next(), fault);
        start(source);
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -1005"));
        EXPECT_EQ(server.attachments("ABC-1").size(), before + 1);
        EXPECT_EQ(server.connectionCount(), connections + 1) << "it went over the connection that was kept";
    }
}

TEST_F(JAControllerUploadFaultsTest, aPostWithoutABodyThatTheServerTookIsNotSentAgain)
{
    for (const Fault& fault : {Fault().close(Point::responseHead(0)), Fault().reset(Point::responseHead(0))}) {
        server.behave();
        events.clear();
        client->sendGetRequest(client->url(QStringLiteral("rest/api/2/issue/ABC-1")), requestCallBack());
        ASSERT_TRUE(waitForEvents(1));
        server.forgetRequests();
        server.misbehave(Match::next(), fault);
        events.clear();
        client->sendPostRequest(client->url(QStringLiteral("rest/api/2/myself")), std::nullopt, std::nullopt,
                                requestCallBack());
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1005"));
        EXPECT_EQ(server.requests().size(), 1u);
    }
}

TEST_F(JAControllerUploadFaultsTest, anAnswerThatComesBeforeTheBodyIsRead)
{
    upload(Fault().status(413, R"({"errorMessages": ["too large"]})", "application/json").beforeBody());
    EXPECT_THAT(events, ElementsAre("(null) 413"));
}

TEST_F(JAControllerUploadFaultsTest, aPageInsteadOfAnAnswer)
{
    server.misbehave(Match(), Fault().status(200, "<html>Please log in</html>", "text/html"));
    start(source);
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("Fatal error 200", "no error"));
}

TEST_F(JAControllerUploadFaultsTest, aSourceThatCannotBeReadGoesOutAsAnEmptyForm)
{
    const QString locked = writeFile("locked", "secret bytes");
    QFile::setPermissions(locked, QFileDevice::Permissions());
    QDir().mkdir(path("folder"));
    const tests::WithoutPrivileges permissionsCount;
    for (const QString& file : {path("missing"), path("folder"), locked, QStringLiteral("/dev/zero"), QString()}) {
        start(file);
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_EQ(server.lastRequest().body, "---X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-x-X-16f8d24075108476--\r\n")
            << file.toStdString();
        EXPECT_NE(events[0], "no error");
    }
    EXPECT_TRUE(server.attachments("ABC-1").empty());
}

TEST_F(JAControllerUploadFaultsTest, aSourceThatShrinksUnderWayFailsTheUpload)
{
    uploadAndHold(Point::requestBody(0));
    ASSERT_TRUE(QFile::resize(source, size / 2));
    server.release();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("NSCocoaErrorDomain 256"));
    EXPECT_EQ(error->localizedDescription(),
              QStringLiteral("The file “source” became shorter or unreadable while it was being read."));
    EXPECT_TRUE(server.attachments("ABC-1").empty());
}

TEST_F(JAControllerUploadFaultsTest, aSourceThatGrowsOrIsOverwrittenUnderWayFailsTheUpload)
{
    for (const qint64 position : {size, size - 5, size / 2}) {
        writeFile("source", QByteArray(size, 'x'));
        makeOld(source);
        uploadAndHold(Point::requestBody(0));
        writeInto(source, position);
        server.release();
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("NSCocoaErrorDomain 256"));
        EXPECT_EQ(error->localizedDescription(),
                  QStringLiteral("The file “source” was changed while it was being read."));
        EXPECT_TRUE(server.attachments("ABC-1").empty());
    }
}

TEST_F(JAControllerUploadFaultsTest, aSourceThatIsOverwrittenBeforeTheAnswerFailsTheUpload)
{
    makeOld(source);
    uploadAndHold(Point::responseHead(0));
    writeInto(source, size / 2);
    server.release();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("NSCocoaErrorDomain 256"));
}

TEST_F(JAControllerUploadFaultsTest, aSourceThatIsRemovedOrReplacedUnderWayIsSentAsItWas)
{
    uploadAndHold(Point::requestBody(0));
    ASSERT_TRUE(QFile::remove(source));
    writeFile("source", "another file");
    server.release();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("no error"));
    const auto attachments = server.attachments("ABC-1");
    ASSERT_EQ(attachments.size(), 1u);
    EXPECT_EQ(server.content(attachments[0].id), std::string(size, 'x'));
}

TEST_F(JAControllerUploadFaultsTest, isCancelledInEveryPhase)
{
    for (const Point point : {Point::requestBody(0), Point::requestBody(size / 2), Point::responseHead(0),
                              Point::responseHead(20), Point::responseBody(3)}) {
        uploadAndHold(point);
        client->cancelUpload();
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -999"));
        server.release();
        EXPECT_TRUE(tests::waitUntil([this] { return server.heldCount() == 0; }));
    }
    start(source);
    client->cancelUpload();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -999"));
}

} // namespace
