#include "tests/kit/WaitUntil.h"
#include "tests/standin/JiraFixture.h"

#include <gmock/gmock.h>

#include <atomic>
#include <fstream>
#include <system_error>
#include <thread>

namespace standin_tests {

namespace {

using namespace standin;
using tests::waitUntil;

class ServerItself : public JiraFixture
{
};

TEST_F(ServerItself, listensOnTheLoopbackInterface)
{
    EXPECT_NE(server.port(), 0);
    EXPECT_EQ(server.url(), "http://127.0.0.1:" + std::to_string(server.port()) + "/");
    EXPECT_EQ(server.certificate(), "");
}

TEST_F(ServerItself, saysWhenThePortIsTaken)
{
    EXPECT_THROW(Server({.port = server.port()}), std::system_error);
}

TEST_F(ServerItself, keepsTheConnectionForManyRequests)
{
    RawClient client(server.port());
    const auto bytes = requestBytes("GET", "/rest/api/2/issue/DEMO-1", cookieOfAnna());
    for (int request = 0; request < 500; ++request) {
        client.send(bytes);
        ASSERT_EQ(client.reply().status, 200);
    }
    EXPECT_EQ(server.connectionCount(), 1U);
    EXPECT_EQ(server.requestCount(), 500U);
}

TEST_F(ServerItself, answersRequestsThatCameTogetherInTheirOrder)
{
    RawClient client(server.port());
    client.send(requestBytes("POST", "/a", {}, "body") + requestBytes("GET", "/b") + requestBytes("GET", "/login.jsp"));
    EXPECT_EQ(client.reply().status, 404);
    EXPECT_EQ(client.reply().status, 404);
    EXPECT_EQ(client.reply().status, 200);
}

TEST_F(ServerItself, readsAHeadThatComesInAnyPieces)
{
    const auto bytes = requestBytes("GET", "/login.jsp");
    RawClient client(server.port());
    for (const char byte : bytes)
        client.send({&byte, 1});
    EXPECT_EQ(client.reply().status, 200);
    EXPECT_EQ(server.lastRequest().head, bytes);
}

TEST_F(ServerItself, closesWhenAsked)
{
    RawClient client(server.port());
    client.send(requestBytes("GET", "/login.jsp", "Connection: close\r\n"));
    EXPECT_THAT(client.readAll(), testing::HasSubstr("\r\nConnection: close\r\n"));
    EXPECT_EQ(client.end(), RawClient::End::closed);
}

TEST_F(ServerItself, refusesWhatIsNoRequest)
{
    RawClient client(server.port());
    client.send("hello\r\n\r\n");
    EXPECT_THAT(client.readAll(), testing::StartsWith("HTTP/1.1 400 Bad Request\r\n"));
    EXPECT_EQ(server.requestCount(), 0U);
}

TEST_F(ServerItself, countsConnectionsAndNoticesTheirEnd)
{
    {
        const RawClient one(server.port());
        const RawClient two(server.port());
        EXPECT_TRUE(waitUntil([this] { return server.openConnectionCount() == 2; }));
    }
    EXPECT_TRUE(waitUntil([this] { return server.openConnectionCount() == 0; }));
    EXPECT_EQ(server.connectionCount(), 2U);
}

TEST_F(ServerItself, recordsRequestsByteForByte)
{
    const auto bytes = requestBytes("POST", "/a?b=c", "X:  y \r\nx: z\r\n", std::string("b\0dy", 4));
    exchange(bytes);
    get("/login.jsp");
    ASSERT_TRUE(waitUntil([this] { return server.finishedRequestCount() == 2; }));
    const auto records = server.requests();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].head + records[0].body, bytes);
    EXPECT_EQ(records[0].method, "POST");
    EXPECT_EQ(records[0].target, "/a?b=c");
    EXPECT_EQ(records[0].path, "/a");
    EXPECT_EQ(records[0].header("x"), "y, z");
    EXPECT_EQ(records[0].headerCount("X"), 2);
    EXPECT_EQ(records[0].bodyLength, 4);
    EXPECT_EQ(records[0].bodyDigest, "0080c2c96a476a23b11b47b54330b460f51dc0cf5b3de9e8dcd8e5bcaa34089b");
    EXPECT_TRUE(records[0].bodyComplete);
    EXPECT_EQ(records[0].status, 404);
    EXPECT_TRUE(records[0].finished);
    EXPECT_EQ(records[0].connection, 1);
    EXPECT_EQ(records[1].connection, 2);
    EXPECT_GT(records[1].sentBodyBytes, 0);
}

TEST_F(ServerItself, findsRecordsByPath)
{
    get("/a/1");
    get("/b");
    get("/a/2?x");
    EXPECT_EQ(server.requests("/a/*").size(), 2U);
    EXPECT_EQ(server.lastRequest().target, "/a/2?x");
}

TEST_F(ServerItself, forgetsRecordsButNotTheirNumber)
{
    get("/a");
    server.forgetRequests();
    EXPECT_TRUE(server.requests().empty());
    EXPECT_EQ(server.lastRequest().method, "");
    EXPECT_EQ(server.requestCount(), 1U);
    get("/b");
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(ServerItself, tellsAListenerOfEachFinishedRequest)
{
    std::atomic<int> status = 0;
    server.onFinished([&status](const RecordedRequest& request) { status = request.status; });
    get("/login.jsp");
    EXPECT_TRUE(waitUntil([&status] { return status == 200; }));
    server.onFinished({});
}

TEST_F(ServerItself, servesManyClientsAtOnce)
{
    std::atomic<int> good = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number) {
        threads.emplace_back([this, number, &good] {
            const auto bytes = Server::pattern(number, 300000);
            for (int turn = 0; turn < 5; ++turn) {
                const auto answer = jsonArray(upload("name=file; filename=a", bytes));
                const auto id = answer[0][QStringLiteral("id")].toString().toStdString();
                good += getAsAnna("/secure/attachment/" + id + "/a").body == bytes;
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(good, 40);
    EXPECT_EQ(server.attachments("DEMO-1").size(), 40U);
}

TEST(ServerLife, endsPromptlyWithHeldConnections)
{
    auto server = std::make_unique<Server>();
    server->misbehave(Match::on("/head"), Fault().hold(Point::responseHead(0)));
    server->misbehave(Match::on("/body"), Fault().hold(Point::requestBody(1)));
    RawClient idle(server->port());
    RawClient head(server->port());
    RawClient body(server->port());
    RawClient halfway(server->port());
    head.send(requestBytes("GET", "/head"));
    body.send(requestBytes("POST", "/body", {}, "0123"));
    halfway.send(requestBytes("POST", "/x", "Content-Length: 5\r\n"));
    ASSERT_TRUE(waitUntil([&] { return server->heldCount() == 2 && server->requestCount() == 3; }));
    const auto start = std::chrono::steady_clock::now();
    server.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
    EXPECT_EQ(head.readAll(), "");
}

TEST(ServerLife, endsWhileAClientDoesNotRead)
{
    auto server = std::make_unique<Server>();
    server->addUser("anna", "secret");
    server->addIssue("DEMO-1");
    server->addAttachment("DEMO-1", {.fileName = "a", .syntheticSize = std::int64_t{1} << 40});
    RawClient client(server->port());
    client.send(requestBytes("GET", "/secure/attachment/10000/a",
                             "Cookie: JSESSIONID=" + server->openSession("anna") + "\r\n"));
    ASSERT_TRUE(waitUntil([&] { return server->bodyBytesSent() > 0; }));
    server.reset();
    EXPECT_FALSE(client.readAll().empty());
}

TEST(ServerRecords, keepAsMuchOfABodyAsAsked)
{
    Server server({.digest = Digest::crc32, .recordedBodyBytes = 4});
    RawClient client(server.port());
    client.send(requestBytes("POST", "/a", {}, "123456789"));
    client.reply();
    const auto record = server.lastRequest();
    EXPECT_EQ(record.body, "1234");
    EXPECT_EQ(record.bodyLength, 9);
    EXPECT_EQ(record.bodyDigest, "cbf43926");
}

TEST(ServerRecords, dropTheOldest)
{
    Server server({.recordedRequests = 2});
    RawClient client(server.port());
    for (const char* path : {"/1", "/2", "/3"}) {
        client.send(requestBytes("GET", path));
        client.reply();
    }
    ASSERT_EQ(server.requests().size(), 2U);
    EXPECT_EQ(server.requests()[0].path, "/2");
    EXPECT_EQ(server.requestCount(), 3U);
}

TEST(ServerSetup, sessionsOfUnknownUsersAreNotGood)
{
    Server server;
    RawClient client(server.port());
    client.send(requestBytes("GET", sessionPath, "Cookie: JSESSIONID=" + server.openSession("nobody") + "\r\n"));
    EXPECT_EQ(client.reply().status, 401);
}

} // namespace

} // namespace standin_tests
