#include "tests/client/ClientTest.h"

#include <QJsonArray>
#include <QThread>

#include <thread>
#include <vector>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;

class JAControllerUploadTest : public tests::ClientTest
{
protected:
    void answer(int status, const std::string& text)
    {
        server.behave();
        server.misbehave(Match(), Fault().status(status, text));
    }

    void upload(const QString& file, const char* name)
    {
        client->uploadFileInIssue(file, QString::fromUtf8(name), QStringLiteral("ABC-1"), completionCallBack(),
                                  [this](qint64 sent, qint64 expected) { progress.emplace_back(sent, expected); });
    }

    /// An upload that the server does not take to its end before it is released: more than the buffers in between hold.
    void uploadAndHold(const char* name)
    {
        server.misbehave(Match::next(), Fault().hold(Point::requestBody(0)));
        upload(writeFile(name, QByteArray(32 << 20, 'x')), name);
        ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() > 0; }));
    }

    std::vector<std::pair<qint64, qint64>> progress;
};

TEST_F(JAControllerUploadTest, attachesTheFileToTheIssue)
{
    logIn();
    upload(writeFile("source", "some bytes"), "My Plan.tessaloom");
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("no error"));
    EXPECT_EQ(server.lastRequest().target, "/rest/api/2/issue/ABC-1/attachments");
    const auto attachments = server.attachments("ABC-1");
    ASSERT_EQ(attachments.size(), 1u);
    EXPECT_EQ(attachments[0].fileName, "My Plan.tessaloom");
    EXPECT_EQ(server.content(attachments[0].id), "some bytes");
}

TEST_F(JAControllerUploadTest, attachesFilesOfNoAndOfOneByte)
{
    logIn();
    upload(writeFile("none", ""), "none");
    ASSERT_TRUE(waitForEvents(1));
    upload(writeFile("one", "1"), "one");
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("no error", "no error"));
    const auto attachments = server.attachments("ABC-1");
    ASSERT_EQ(attachments.size(), 2u);
    EXPECT_EQ(server.content(attachments[0].id), "");
    EXPECT_EQ(server.content(attachments[1].id), "1");
}

TEST_F(JAControllerUploadTest, takesOneArrayForSuccess)
{
    for (const char* text : {R"([{"id": "1"}])", "[]"}) {
        answer(200, text);
        events.clear();
        upload(writeFile("source", "B"), "a.bin");
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("no error"));
    }
}

TEST_F(JAControllerUploadTest, takesJSONThatIsNoObjectForSuccessWhateverTheStatus)
{
    for (const char* text : {"[]", "null", "42", "\"text\"", "true"}) {
        answer(500, text);
        events.clear();
        upload(writeFile("source", "B"), "a.bin");
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("no error")) << text;
    }
}

TEST_F(JAControllerUploadTest, callsBackTwiceForAnAnswerThatIsNoJSON)
{
    for (const char* text : {"", "<html>413</html>", "[{\"id\": ", "XSRF check failed"}) {
        answer(413, text);
        events.clear();
        upload(writeFile("source", "B"), "a.bin");
        ASSERT_TRUE(waitForEvents(2));
        EXPECT_THAT(events, ElementsAre("Fatal error 413", "no error")) << text;
    }
}

TEST_F(JAControllerUploadTest, hasNoUserInfoInAFatalError)
{
    answer(200, "");
    std::vector<std::optional<tljira::Error>> errors;
    client->uploadFileInIssue(
        writeFile("source", "B"), QStringLiteral("a.bin"), QStringLiteral("ABC-1"),
        [&](const auto& newError) { errors.push_back(newError); }, nullptr);
    ASSERT_TRUE(tests::waitUntil([&] { return errors.size() == 2; }));
    EXPECT_EQ(errors[0], (tljira::Error{QStringLiteral("Fatal error"), 200, std::nullopt}));
    EXPECT_EQ(errors[1], std::nullopt);
}

TEST_F(JAControllerUploadTest, takesAnObjectForFailureWithItsErrorAsDomain)
{
    answer(403, R"({"error": "Attachments are disabled", "x": 1})");
    upload(writeFile("source", "B"), "a.bin");
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("Attachments are disabled 403"));
    const QJsonObject answered{{QStringLiteral("error"), QStringLiteral("Attachments are disabled")},
                               {QStringLiteral("x"), 1}};
    EXPECT_EQ(error->userInfo, QJsonValue(answered));
}

TEST_F(JAControllerUploadTest, takesAnObjectOfStatus200ForFailureToo)
{
    answer(200, R"({"errorMessages": ["no"], "errors": {}})");
    upload(writeFile("source", "B"), "a.bin");
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(null) 200"));
    const QJsonObject answered{{QStringLiteral("errorMessages"), QJsonArray{QStringLiteral("no")}},
                               {QStringLiteral("errors"), QJsonObject()}};
    EXPECT_EQ(error->userInfo, QJsonValue(answered));
}

TEST_F(JAControllerUploadTest, printsAnErrorOfAnyTypeIntoTheDomain)
{
    const std::vector<std::pair<const char*, const char*>> domains = {
        {R"({"error": null})", "<null> 400"},
        {R"({"error": 7})", "7 400"},
        {R"({"error": true})", "1 400"},
        {R"({"error": [1, 2]})", "(\n    1,\n    2\n) 400"},
        {R"({"error": {"a": 1}})", "{\n    a = 1;\n} 400"},
    };
    for (const auto& [text, expected] : domains) {
        answer(400, text);
        events.clear();
        upload(writeFile("source", "B"), "a.bin");
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre(expected)) << text;
    }
}

TEST_F(JAControllerUploadTest, reportsTheServersOwnRefusals)
{
    logIn();
    server.allowAttachments(false);
    upload(writeFile("source", "B"), "a.bin");
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("(null) 403"));
    EXPECT_TRUE(server.attachments("ABC-1").empty());
}

TEST_F(JAControllerUploadTest, reportsHowMuchOfTheBodyIsSent)
{
    logIn();
    const qint64 fileSize = 8 << 20;
    upload(writeFile("source", QByteArray(fileSize, 'x')), "a.bin");
    ASSERT_TRUE(waitForEvents(1));
    const qint64 bodySize = server.lastRequest().bodyLength;
    EXPECT_GT(bodySize, fileSize);
    ASSERT_FALSE(progress.empty());
    qint64 before = 0;
    for (const auto& [sent, expected] : progress) {
        EXPECT_GT(sent, before);
        EXPECT_EQ(expected, bodySize);
        before = sent;
    }
    EXPECT_EQ(before, bodySize);
}

TEST_F(JAControllerUploadTest, asksForAMinuteForFreshDataAndForCookies)
{
    answer(200, "[]");
    upload(writeFile("source", "B"), "a.bin");
    const tljira::URLRequest& request = client->upladTask()->originalRequest();
    EXPECT_EQ(request.timeoutInterval, 60.0);
    EXPECT_EQ(request.cachePolicy, tljira::URLRequestCachePolicy::ReloadIgnoringLocalCacheData);
    EXPECT_TRUE(request.HTTPShouldHandleCookies);
    EXPECT_EQ(request.HTTPMethod, QStringLiteral("POST"));
    EXPECT_TRUE(waitForEvents(1));
}

TEST_F(JAControllerUploadTest, takesTheKeyAsItIs)
{
    answer(200, "[]");
    client->uploadFileInIssue(writeFile("source", "B"), QStringLiteral("a.bin"), QStringLiteral(" abc-1 "),
                              completionCallBack(), nullptr);
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(server.lastRequest().target, "/rest/api/2/issue/%20abc-1%20/attachments");
}

TEST_F(JAControllerUploadTest, sendsEveryFileAsBytesOfNoKnownType)
{
    for (const char* path : {"a.txt", "/tmp/picture.png", "plan.tessaloom", "noextension", ""})
        EXPECT_EQ(JAController::mimeTypeForPath(QString::fromLatin1(path)), QStringLiteral("application/octet-stream"));
    EXPECT_EQ(JAController::mimeTypeForPath(std::nullopt), QStringLiteral("application/octet-stream"));
}

TEST_F(JAControllerUploadTest, writesItsLinesToTheLog)
{
    answer(200, "[]");
    const QString file = writeFile("source", "B");
    upload(file, "a.bin");
    ASSERT_TRUE(waitForEvents(1));
    const QStringList lines = log.lines();
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[0], QStringLiteral("uploadFileInIssue path file: ") + file);
    EXPECT_EQ(lines[1], QStringLiteral("eq: (null)"));
    EXPECT_EQ(lines[2], QStringLiteral("Error task: %1").arg(client->upladTask()->hash()));
    EXPECT_THAT(lines[3].toStdString(), testing::StartsWith(" [] \n(null) \n{ URL: http://jira.example.test/rest/"));
}

TEST_F(JAControllerUploadTest, writesThePlaceholderForABodyThatIsNoText)
{
    answer(200, "\xff\xfe");
    upload(writeFile("source", "B"), "a.bin");
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(log.lines().last().toStdString(), testing::StartsWith(" (null) \n(null) \n{ URL: "));
}

TEST_F(JAControllerUploadTest, keepsTaskAndProgressCallbackAfterTheEnd)
{
    answer(200, "[]");
    upload(writeFile("source", "B"), "a.bin");
    const auto task = client->upladTask();
    EXPECT_NE(task, nullptr);
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(client->upladTask(), task);
    ASSERT_TRUE(client->uploadCallBack());
    client->uploadCallBack()(1, 2);
    EXPECT_EQ(progress.back(), std::make_pair(qint64(1), qint64(2)));
}

TEST_F(JAControllerUploadTest, reportsProgressOfEveryTaskToTheNewestCallback)
{
    std::vector<std::pair<qint64, qint64>> newest;
    uploadAndHold("older");
    progress.clear();
    client->setUploadCallBack([&](qint64 sent, qint64 expected) { newest.emplace_back(sent, expected); });
    server.release();
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_TRUE(progress.empty());
    ASSERT_FALSE(newest.empty());
    EXPECT_EQ(newest.back().first, newest.back().second);
}

TEST_F(JAControllerUploadTest, cancelDoesNothingBeforeAnyUpload)
{
    client->cancelUpload();
    tests::drainMainQueue();
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(log.lines(), QStringList());
}

TEST_F(JAControllerUploadTest, cancelEndsTheUploadWithOneError)
{
    uploadAndHold("a.bin");
    client->cancelUpload();
    EXPECT_TRUE(events.empty());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -999"));
    client->cancelUpload();
    tests::drainMainQueue();
    EXPECT_EQ(events.size(), 1u);
}

TEST_F(JAControllerUploadTest, cancelDoesNothingAfterTheEnd)
{
    answer(200, "[]");
    upload(writeFile("source", "B"), "a.bin");
    ASSERT_TRUE(waitForEvents(1));
    client->cancelUpload();
    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("no error"));
}

TEST_F(JAControllerUploadTest, cancelEndsOnlyTheNewestUpload)
{
    logIn();
    std::vector<std::string> ends;
    const auto hold = [&](const char* name) {
        server.misbehave(Match::next(), Fault().hold(Point::requestBody(0)));
        client->uploadFileInIssue(
            writeFile(name, QByteArray(32 << 20, 'x')), QString::fromUtf8(name), QStringLiteral("ABC-1"),
            [&ends, name](const auto& newError) { ends.push_back(name + (": " + tests::shortText(newError))); },
            nullptr);
    };
    hold("older");
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
    hold("newer");
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 2; }));
    client->cancelUpload();
    ASSERT_TRUE(tests::waitUntil([&] { return !ends.empty(); }));
    tests::drainMainQueue();
    EXPECT_THAT(ends, ElementsAre("newer: NSURLErrorDomain -999"));
    server.release();
    ASSERT_TRUE(tests::waitUntil([&] { return ends.size() > 1; }));
    EXPECT_THAT(ends, ElementsAre("newer: NSURLErrorDomain -999", "older: no error"));
    const auto attachments = server.attachments("ABC-1");
    ASSERT_EQ(attachments.size(), 1u);
    EXPECT_EQ(attachments[0].fileName, "older");
}

TEST_F(JAControllerUploadTest, startsFromAnyThreadAndReportsOnTheMainThread)
{
    logIn();
    const QString file = writeFile("source", QByteArray(4 << 20, 'x'));
    const QThread* const mainThread = QThread::currentThread();
    constexpr std::size_t uploads = 4;
    std::vector<std::jthread> threads;
    for (std::size_t number = 0; number < uploads; ++number) {
        threads.emplace_back([this, file, mainThread] {
            client->uploadFileInIssue(
                file, QStringLiteral("a.bin"), QStringLiteral("ABC-1"),
                [this, mainThread](const auto& newError) {
                    EXPECT_EQ(QThread::currentThread(), mainThread);
                    events.push_back(tests::shortText(newError));
                },
                [mainThread](qint64, qint64) { EXPECT_EQ(QThread::currentThread(), mainThread); });
        });
    }
    client->cancelDownload();
    while (client->upladTask() == nullptr)
        tests::drainMainQueue();
    ASSERT_TRUE(waitForEvents(uploads));
    threads.clear();
    EXPECT_THAT(events, testing::Each("no error"));
    EXPECT_EQ(server.attachments("ABC-1").size(), uploads);
}

TEST_F(JAControllerUploadTest, cancelsFromAnyThread)
{
    uploadAndHold("a.bin");
    std::jthread canceller([this] { client->cancelUpload(); });
    ASSERT_TRUE(waitForEvents(1));
    canceller.join();
    EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -999"));
}

TEST_F(JAControllerUploadTest, doesWithoutCallbacks)
{
    logIn();
    client->uploadFileInIssue(writeFile("source", "B"), QStringLiteral("a.bin"), QStringLiteral("ABC-1"), nullptr,
                              nullptr);
    EXPECT_TRUE(waitForEnds(1));
    EXPECT_EQ(server.attachments("ABC-1").size(), 1u);
}

TEST_F(JAControllerUploadTest, sendsGivenBytesToAGivenAddress)
{
    answer(201, "made");
    client->uploadImageDouble2(QStringLiteral("http://jira.example.test/somewhere"), QStringLiteral("/tmp/a.bin"),
                               QStringLiteral("a.bin"), tljira::Data("B"), requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("201, no error"));
    EXPECT_EQ(body, QByteArray("made"));
    EXPECT_EQ(server.lastRequest().target, "/somewhere");
    EXPECT_THAT(server.lastRequest().body, testing::HasSubstr("filename=a.bin\r\n"));
}

TEST_F(JAControllerUploadTest, failsWhenNoServerIsSet)
{
    client->setHost(std::nullopt);
    upload(writeFile("source", "B"), "a.bin");
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -1002"));
}

} // namespace
