#include "standin/RequestHead.h"

#include <gtest/gtest.h>

namespace {

using standin::RequestHead;

TEST(RequestHead, takesTheRequestLineApart)
{
    const auto head = RequestHead::parse("GET /a/b?c=d?e HTTP/1.1\r\n\r\n");
    ASSERT_TRUE(head);
    EXPECT_EQ(head->method(), "GET");
    EXPECT_EQ(head->target(), "/a/b?c=d?e");
    EXPECT_EQ(head->path(), "/a/b");
    EXPECT_EQ(head->query(), "c=d?e");
    EXPECT_EQ(head->contentLength(), 0);
}

TEST(RequestHead, keepsTheBytesAsTheyCame)
{
    const std::string bytes = "GET / HTTP/1.1\r\nhOST:  x \r\n\r\n";
    EXPECT_EQ(RequestHead::parse(bytes)->bytes(), bytes);
}

TEST(RequestHead, findsHeadersWithoutCaseAndJoinsThem)
{
    const auto head = RequestHead::parse("GET / HTTP/1.1\r\nCookie: a=1\r\nX: \r\ncookie: b=2\r\n\r\n");
    ASSERT_TRUE(head);
    EXPECT_EQ(head->header("COOKIE"), "a=1, b=2");
    EXPECT_EQ(head->headers("cookie"), (std::vector<std::string>{"a=1", "b=2"}));
    EXPECT_TRUE(head->has("x"));
    EXPECT_FALSE(head->has("y"));
}

TEST(RequestHead, readsALengthBeyondFourGigabytes)
{
    const auto head = RequestHead::parse("PUT / HTTP/1.1\r\nContent-Length: 5368709120\r\n\r\n");
    ASSERT_TRUE(head);
    EXPECT_EQ(head->contentLength(), 5368709120);
}

TEST(RequestHead, refusesWhatIsNoRequest)
{
    for (const char* bytes :
         {"", "\r\n", "GET /\r\n\r\n", "GET x HTTP/1.1\r\n\r\n", "GET / HTTP/2\r\n\r\n",
          "GET / HTTP/1.1\r\nno colon\r\n\r\n", "GET / HTTP/1.1\r\n: x\r\n\r\n",
          "GET / HTTP/1.1\r\nContent-Length: x\r\n\r\n", "GET / HTTP/1.1\r\nContent-Length: -1\r\n\r\n",
          "GET / HTTP/1.1\r\nContent-Length: 1\r\nContent-Length: 2\r\n\r\n", "GET / HTTP/1.1\r\n"})
        EXPECT_FALSE(RequestHead::parse(bytes)) << bytes;
}

TEST(RequestHead, knowsWhetherTheConnectionStays)
{
    EXPECT_TRUE(RequestHead::parse("GET / HTTP/1.1\r\n\r\n")->keepsConnection());
    EXPECT_FALSE(RequestHead::parse("GET / HTTP/1.1\r\nConnection: Close\r\n\r\n")->keepsConnection());
    EXPECT_FALSE(RequestHead::parse("GET / HTTP/1.0\r\n\r\n")->keepsConnection());
    EXPECT_TRUE(RequestHead::parse("GET / HTTP/1.0\r\nConnection: keep-alive\r\n\r\n")->keepsConnection());
}

TEST(RequestHead, seesChunkedBodiesAndExpectations)
{
    const auto head =
        RequestHead::parse("PUT / HTTP/1.1\r\nTransfer-Encoding: Chunked\r\nExpect: 100-Continue\r\n\r\n");
    ASSERT_TRUE(head);
    EXPECT_TRUE(head->isChunked());
    EXPECT_TRUE(head->expectsContinue());
    EXPECT_FALSE(RequestHead::parse("PUT / HTTP/1.1\r\n\r\n")->isChunked());
}

} // namespace
