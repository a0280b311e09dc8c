#include "standin/ChunkedDecoder.h"

#include <gtest/gtest.h>

namespace {

using standin::ChunkedDecoder;

std::string decoded(ChunkedDecoder& decoder, std::string_view bytes, std::size_t* used = nullptr)
{
    std::string payload;
    const auto count = decoder.feed(bytes, [&payload](std::string_view piece) { payload += piece; });
    if (used != nullptr)
        *used = count;
    return payload;
}

constexpr std::string_view body = "5\r\nhello\r\nA;x=y\r\n, worlds!!\r\n0\r\nTrailer: z\r\n\r\n";

TEST(ChunkedDecoder, joinsChunks)
{
    ChunkedDecoder decoder;
    EXPECT_EQ(decoded(decoder, body), "hello, worlds!!");
    EXPECT_TRUE(decoder.isDone());
}

TEST(ChunkedDecoder, doesSoAtEverySplit)
{
    for (std::size_t split = 0; split <= body.size(); ++split) {
        ChunkedDecoder decoder;
        auto payload = decoded(decoder, body.substr(0, split));
        EXPECT_EQ(decoder.isDone(), split == body.size()) << split;
        payload += decoded(decoder, body.substr(split));
        EXPECT_EQ(payload, "hello, worlds!!") << split;
        EXPECT_TRUE(decoder.isDone()) << split;
    }
}

TEST(ChunkedDecoder, leavesWhatFollowsTheBody)
{
    ChunkedDecoder decoder;
    std::size_t used = 0;
    EXPECT_EQ(decoded(decoder, "0\r\n\r\nGET /", &used), "");
    EXPECT_EQ(used, 5U);
}

TEST(ChunkedDecoder, failsOnWhatIsNoChunk)
{
    for (const char* bytes : {"x\r\n", "5\nhello", "2\r\nabc\r\n", "-1\r\n", "5 \r\n", "\r\n"}) {
        ChunkedDecoder decoder;
        decoded(decoder, bytes);
        EXPECT_TRUE(decoder.hasFailed()) << bytes;
    }
}

TEST(ChunkedDecoder, failsOnAnEndlessLine)
{
    ChunkedDecoder decoder;
    decoded(decoder, std::string(9000, '1'));
    EXPECT_TRUE(decoder.hasFailed());
}

} // namespace
