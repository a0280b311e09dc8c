#include "tests/standin/JiraFixture.h"
#include "tests/kit/WaitUntil.h"

#include <gmock/gmock.h>

#include <zlib.h>

#include <chrono>
#include <thread>

namespace standin_tests {

namespace {

using namespace standin;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;
using tests::waitUntil;
using End = RawClient::End;

constexpr const char* page = "/login.jsp";

class Faults : public JiraFixture
{
protected:
    explicit Faults(Options options = {})
        : JiraFixture(options)
        , client(server.port())
    {
        proper = get(page).body;
    }

    void askForPage() { client.send(requestBytes("GET", page)); }
    /// All the bytes of the page's response up to the end of the connection.
    std::string pageBytes()
    {
        askForPage();
        return client.readAll();
    }
    static std::string bodyOf(const std::string& bytes) { return bytes.substr(bytes.find("\r\n\r\n") + 4); }

    RawClient client;
    std::string proper;
};

using Clock = std::chrono::steady_clock;

TEST_F(Faults, anyStatusWithAnyBodyAndType)
{
    server.misbehave(Match::next(), Fault().status(503, "<b>busy</b>", "text/html"));
    const auto reply = get(page);
    EXPECT_THAT(reply.head, StartsWith("HTTP/1.1 503 Service Unavailable\r\n"));
    EXPECT_EQ(reply.header("Content-Type"), "text/html");
    EXPECT_EQ(reply.body, "<b>busy</b>");
    EXPECT_EQ(get(page).status, 200);
}

TEST_F(Faults, aStatusReplacesWhatTheRequestWouldDo)
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().status(502));
    EXPECT_EQ(upload("name=file; filename=a", "x").status, 502);
    EXPECT_TRUE(server.attachments("DEMO-1").empty());
}

TEST_F(Faults, aProxyCanRefuseALargeFileInHtml)
{
    server.misbehave(Match::on("POST", "*/attachments"),
                     Fault().status(413, "<html>Too large</html>", "text/html").beforeBody());
    const auto reply = upload("name=file; filename=a", "x");
    EXPECT_EQ(reply.status, 413);
    EXPECT_EQ(reply.header("Content-Type"), "text/html");
}

TEST_F(Faults, tooManyRequestsTellWhenToTryAgain)
{
    server.misbehave(Match::next(), Fault().tooManyRequests(7));
    const auto reply = get(page);
    EXPECT_EQ(reply.status, 429);
    EXPECT_EQ(reply.header("Retry-After"), "7");
    EXPECT_EQ(reply.header("X-RateLimit-Remaining"), "0");
    EXPECT_EQ(reply.header("X-RateLimit-Interval-Seconds"), "7");
}

TEST_F(Faults, rawBytesAreSentAsTheyAre)
{
    server.misbehave(Match::next(), Fault().raw("220 ready\r\n"));
    EXPECT_EQ(pageBytes(), "220 ready\r\n");
    EXPECT_EQ(client.end(), End::closed);
}

TEST_F(Faults, aHeaderIsAddedOrReplaced)
{
    server.misbehave(Match::next(), Fault().header("X-A", "b").header("content-type", "image/png"));
    const auto reply = get(page);
    EXPECT_EQ(reply.header("X-A"), "b");
    EXPECT_EQ(reply.header("Content-Type"), "image/png");
    EXPECT_EQ(reply.body, proper);
}

TEST_F(Faults, headersCanBeAMegabyte)
{
    server.misbehave(Match::next(), Fault().fillerHeaders(1 << 20));
    const auto reply = get(page);
    EXPECT_GE(reply.head.size(), std::size_t{1} << 20);
    EXPECT_LT(reply.head.size(), (std::size_t{1} << 20) + 1000);
    EXPECT_EQ(reply.header("X-Filler-1024").size(), 1024 - 4 - std::string("X-Filler-1024").size());
    EXPECT_EQ(reply.body, proper);
}

TEST_F(Faults, aRedirectLeadsWhereverAsked)
{
    server.misbehave(Match::next(), Fault().redirect("http://other.example.test/x"));
    server.misbehave(Match::next(), Fault().redirect("/rest/api/2/myself", 307));
    auto reply = get(page);
    EXPECT_EQ(reply.status, 302);
    EXPECT_EQ(reply.header("Location"), "http://other.example.test/x");
    reply = get(page);
    EXPECT_EQ(reply.status, 307);
    EXPECT_EQ(reply.header("Location"), "/rest/api/2/myself");
}

TEST_F(Faults, aRedirectCanLoop)
{
    server.misbehave(Match::on(page), Fault().redirectToItself());
    for (int turn = 0; turn < 3; ++turn)
        EXPECT_EQ(get(std::string(page) + "?a=b").header("Location"), "/login.jsp?a=b");
}

TEST_F(Faults, theHeadCanBeDelayed)
{
    server.misbehave(Match::next(), Fault().delay(150ms));
    const auto start = Clock::now();
    EXPECT_EQ(get(page).body, proper);
    EXPECT_GE(Clock::now() - start, 150ms);
}

TEST_F(Faults, theBodyCanBeDelayedInTheMiddle)
{
    server.misbehave(Match::next(), Fault().delay(150ms, Point::responseBody(10)));
    const auto start = Clock::now();
    EXPECT_EQ(get(page).body, proper);
    EXPECT_GE(Clock::now() - start, 150ms);
}

TEST_F(Faults, theBodyCanDrip)
{
    server.misbehave(Match::next(), Fault().status(200, "0123456789").drip(2, 30ms));
    const auto start = Clock::now();
    EXPECT_EQ(get(page).body, "0123456789");
    EXPECT_GE(Clock::now() - start, 120ms);
}

TEST_F(Faults, theRequestCanBeSipped)
{
    server.misbehave(Match::next(), Fault().sip(100, 20ms));
    const auto start = Clock::now();
    EXPECT_EQ(exchange(requestBytes("POST", page, {}, std::string(1000, 'x'))).status, 200);
    EXPECT_GE(Clock::now() - start, 180ms);
}

TEST_F(Faults, anAnswerIsHeldUntilItIsReleased)
{
    server.misbehave(Match::next(), Fault().hold(Point::responseHead(0)));
    askForPage();
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    EXPECT_EQ(server.lastRequest().status, 0);
    EXPECT_FALSE(server.lastRequest().finished);
    server.release();
    EXPECT_EQ(server.heldCount(), 0U);
    EXPECT_EQ(client.reply().body, proper);
}

TEST_F(Faults, anAnswerIsHeldInTheMiddleOfItsBody)
{
    server.misbehave(Match::next(), Fault().hold(Point::responseBody(5)));
    askForPage();
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    EXPECT_EQ(server.lastRequest().status, 200);
    EXPECT_EQ(server.lastRequest().sentBodyBytes, 5);
    server.release();
    EXPECT_EQ(client.reply().body, proper);
}

TEST_F(Faults, aRequestIsHeldInTheMiddleOfItsBody)
{
    server.misbehave(Match::next(), Fault().hold(Point::requestBody(3)));
    client.send(requestBytes("POST", page, {}, "0123456789"));
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    EXPECT_EQ(server.lastRequest().bodyLength, 3);
    EXPECT_EQ(server.lastRequest().body, "012");
    server.release();
    EXPECT_EQ(client.reply().status, 200);
    EXPECT_EQ(server.lastRequest().body, "0123456789");
}

TEST_F(Faults, aHeldConnectionKeepsNobodyElseWaiting)
{
    server.misbehave(Match::next(), Fault().hold(Point::responseHead(0)));
    askForPage();
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    EXPECT_EQ(get(page).body, proper);
}

TEST_F(Faults, aHeldClientThatGoesAwayIsNoticed)
{
    server.misbehave(Match::next(), Fault().hold(Point::requestBody(3)));
    {
        RawClient leaving(server.port());
        leaving.send(requestBytes("POST", page, {}, "0123456789"));
        ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    }
    EXPECT_TRUE(waitUntil([this] { return server.heldCount() == 0; }));
    EXPECT_TRUE(waitUntil([this] { return server.lastRequest().finished; }));
    EXPECT_FALSE(server.lastRequest().bodyComplete);
}

TEST_F(Faults, aConnectionIsClosedBeforeTheHead)
{
    server.misbehave(Match::next(), Fault().close(Point::responseHead(0)));
    EXPECT_EQ(pageBytes(), "");
    EXPECT_EQ(client.end(), End::closed);
}

TEST_F(Faults, aConnectionIsResetBeforeTheHead)
{
    server.misbehave(Match::next(), Fault().reset(Point::responseHead(0)));
    EXPECT_EQ(pageBytes(), "");
    EXPECT_EQ(client.end(), End::reset);
}

TEST_F(Faults, aConnectionIsClosedInTheHead)
{
    server.misbehave(Match::next(), Fault().close(Point::responseHead(12)));
    EXPECT_EQ(pageBytes(), "HTTP/1.1 200");
    EXPECT_EQ(client.end(), End::closed);
}

TEST_F(Faults, aConnectionIsClosedInTheBody)
{
    server.misbehave(Match::next(), Fault().close(Point::responseBody(7)));
    const auto bytes = pageBytes();
    EXPECT_THAT(bytes, HasSubstr("Content-Length: " + std::to_string(proper.size()) + "\r\n"));
    EXPECT_EQ(bodyOf(bytes), proper.substr(0, 7));
    EXPECT_EQ(client.end(), End::closed);
}

/// A reset may overtake what was sent before it, so the test takes that first.
TEST_F(Faults, aConnectionIsResetInTheBody)
{
    server.misbehave(Match::next(), Fault().hold(Point::responseBody(7)).reset(Point::responseBody(7)));
    askForPage();
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    std::string bytes;
    while (bytes.find("\r\n\r\n") == std::string::npos)
        bytes += client.read(1);
    EXPECT_EQ(client.read(7), proper.substr(0, 7));
    server.release();
    EXPECT_EQ(client.readAll(), "");
    EXPECT_EQ(client.end(), End::reset);
}

TEST_F(Faults, aConnectionIsResetInTheRequest)
{
    server.misbehave(Match::next(), Fault().reset(Point::requestBody(1000)));
    client.send(requestBytes("POST", page, "Content-Length: 5000000\r\n") + std::string(1000, 'x'));
    EXPECT_EQ(client.readAll(), "");
    EXPECT_EQ(client.end(), End::reset);
    EXPECT_TRUE(waitUntil([this] { return server.lastRequest().finished; }));
    EXPECT_EQ(server.lastRequest().bodyLength, 1000);
}

TEST_F(Faults, aConnectionIsClosedInTheRequest)
{
    server.misbehave(Match::next(), Fault().close(Point::requestBody(1000)));
    client.send(requestBytes("POST", page, "Content-Length: 5000000\r\n") + std::string(1000, 'x'));
    EXPECT_EQ(client.readAll(), "");
    EXPECT_EQ(client.end(), End::closed);
}

TEST_F(Faults, aConnectionIsResetBeforeAByteIsRead)
{
    server.resetConnections();
    RawClient unlucky(server.port());
    unlucky.send(requestBytes("GET", page));
    EXPECT_EQ(unlucky.readAll(), "");
    EXPECT_EQ(unlucky.end(), End::reset);
    EXPECT_EQ(get(page).status, 200);
}

TEST_F(Faults, anAnswerComesBeforeTheBodyWasRead)
{
    server.misbehave(Match::next(), Fault().status(403, "no").beforeBody());
    client.send(requestBytes("POST", page, "Content-Length: 10\r\n"));
    EXPECT_EQ(client.reply().body, "no");
    EXPECT_EQ(server.lastRequest().bodyLength, 0);
    client.send("0123456789" + requestBytes("GET", page));
    EXPECT_EQ(client.reply().body, proper);
}

TEST_F(Faults, aBodyIsShorterThanAnnounced)
{
    server.misbehave(Match::next(), Fault().announce(5));
    const auto bytes = pageBytes();
    EXPECT_THAT(bytes, HasSubstr("Content-Length: " + std::to_string(proper.size() + 5) + "\r\n"));
    EXPECT_EQ(bodyOf(bytes), proper);
    EXPECT_EQ(client.end(), End::closed);
}

TEST_F(Faults, aBodyIsLongerThanAnnounced)
{
    server.misbehave(Match::next(), Fault().announce(-5));
    const auto bytes = pageBytes();
    EXPECT_THAT(bytes, HasSubstr("Content-Length: " + std::to_string(proper.size() - 5) + "\r\n"));
    EXPECT_EQ(bodyOf(bytes), proper);
}

TEST_F(Faults, aBodyComesWithoutALength)
{
    server.misbehave(Match::next(), Fault().withoutLength());
    const auto bytes = pageBytes();
    EXPECT_THAT(bytes, testing::Not(HasSubstr("Content-Length")));
    EXPECT_EQ(bodyOf(bytes), proper);
    EXPECT_EQ(client.end(), End::closed);
}

TEST_F(Faults, aBodyComesInChunks)
{
    server.misbehave(Match::next(), Fault().status(200, "0123456789").chunked(0, 4));
    askForPage();
    const auto head = client.reply().head;
    EXPECT_THAT(head, HasSubstr("Transfer-Encoding: chunked\r\n"));
    EXPECT_THAT(head, testing::Not(HasSubstr("Content-Length")));
    const std::string chunks = "4\r\n0123\r\n4\r\n4567\r\n2\r\n89\r\n0\r\n\r\n";
    EXPECT_EQ(client.read(chunks.size()), chunks);
    askForPage();
    EXPECT_EQ(client.reply().body, proper);
}

TEST_F(Faults, chunksAreCutShort)
{
    server.misbehave(Match::next(2), Fault().status(200, "0123456789").chunked(5, 100));
    EXPECT_EQ(bodyOf(pageBytes()), "a\r\n0123456789\r\n");
    EXPECT_EQ(client.end(), End::closed);
}

/// What comes out of a gzip stream, and whether it was whole.
std::pair<std::string, bool> unzipped(const std::string& bytes)
{
    z_stream stream = {};
    inflateInit2(&stream, 15 + 16);
    std::string result(1 << 16, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    const int code = inflate(&stream, Z_SYNC_FLUSH);
    result.resize(stream.total_out);
    inflateEnd(&stream);
    return {result, code == Z_STREAM_END};
}

TEST_F(Faults, aBodyComesCompressed)
{
    server.misbehave(Match::next(), Fault().gzip());
    const auto reply = get(page);
    EXPECT_EQ(reply.header("Content-Encoding"), "gzip");
    EXPECT_EQ(unzipped(reply.body), std::pair(proper, true));
}

TEST_F(Faults, aCompressedBodyIsCutShort)
{
    server.misbehave(Match::next(), Fault().gzip(9));
    const auto reply = get(page);
    EXPECT_TRUE(reply.isComplete);
    const auto [bytes, isWhole] = unzipped(reply.body);
    EXPECT_FALSE(isWhole);
    EXPECT_THAT(proper, StartsWith(bytes));
}

TEST_F(Faults, aCompressedBodyComesInChunks)
{
    server.misbehave(Match::next(), Fault().gzip().chunked(0, 1 << 20).header("Connection", "close"));
    client.send(requestBytes("GET", page, "Connection: close\r\n"));
    const auto body = bodyOf(client.readAll());
    const auto start = body.find("\r\n") + 2;
    EXPECT_EQ(unzipped(body.substr(start, body.size() - start - 7)), std::pair(proper, true));
}

TEST_F(Faults, faultsCombine)
{
    server.misbehave(Match::next(),
                     Fault().status(500, "0123456789").delay(50ms).header("X", "y").close(Point::responseBody(4)));
    const auto start = Clock::now();
    const auto bytes = pageBytes();
    EXPECT_THAT(bytes, StartsWith("HTTP/1.1 500 Internal Server Error\r\n"));
    EXPECT_THAT(bytes, HasSubstr("X: y\r\n"));
    EXPECT_EQ(bodyOf(bytes), "0123");
    EXPECT_GE(Clock::now() - start, 50ms);
}

TEST_F(Faults, behavingForgetsThem)
{
    server.misbehave(Match::on("*"), Fault().status(500));
    EXPECT_EQ(get(page).status, 500);
    server.behave();
    EXPECT_EQ(get(page).status, 200);
}

class FaultsWithSmallBuffers : public Faults
{
protected:
    FaultsWithSmallBuffers()
        : Faults({.socketBufferBytes = 8192})
    {
    }
};

TEST_F(FaultsWithSmallBuffers, aHeldUploadStopsTheClient)
{
    server.misbehave(Match::next(), Fault().hold(Point::requestBody(3)));
    const std::string body(std::size_t{20} << 20, 'x');
    std::thread sender([this, &body] { client.send(requestBytes("POST", page, {}, body)); });
    EXPECT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    EXPECT_EQ(server.bodyBytesReceived(), 3);
    server.release();
    sender.join();
    EXPECT_EQ(client.reply().status, 200);
    EXPECT_EQ(server.bodyBytesReceived(), static_cast<std::int64_t>(body.size()));
}

} // namespace

} // namespace standin_tests
