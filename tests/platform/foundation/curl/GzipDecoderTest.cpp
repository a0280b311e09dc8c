#include "platform/foundation/loading/curl/GzipDecoder.h"

#include <gtest/gtest.h>

#include <zlib.h>

#include <string>

namespace {

using tljira::GzipDecoder;

std::string packed(const std::string& text)
{
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    std::string output(deflateBound(&stream, text.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(output.data());
    stream.avail_out = static_cast<uInt>(output.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    output.resize(stream.total_out);
    deflateEnd(&stream);
    return output;
}

struct Decoded
{
    bool isGzip = true;
    bool isComplete = false;
    std::string text;
};

Decoded decoded(const std::string& bytes, std::size_t step)
{
    GzipDecoder decoder;
    Decoded result;
    for (std::size_t begin = 0; begin < bytes.size() && result.isGzip; begin += step) {
        const std::string part = bytes.substr(begin, step);
        result.isGzip = decoder.decode(part.data(), part.size(), [&](const char* text, std::size_t size) {
            result.text.append(text, size);
            return true;
        });
    }
    result.isComplete = decoder.isComplete();
    return result;
}

const std::string text = "The quick brown fox, the quick brown fox, and once more the quick brown fox.";

TEST(GzipDecoder, unpacksInPartsOfAnySize)
{
    const std::string bytes = packed(text);
    for (std::size_t step = 1; step <= bytes.size(); ++step) {
        const Decoded result = decoded(bytes, step);
        EXPECT_TRUE(result.isGzip);
        EXPECT_TRUE(result.isComplete);
        EXPECT_EQ(result.text, text) << step;
    }
}

TEST(GzipDecoder, knowsAStreamThatIsCutShortAnywhere)
{
    const std::string bytes = packed(text);
    for (std::size_t length = 1; length < bytes.size(); ++length)
        EXPECT_FALSE(decoded(bytes.substr(0, length), 7).isComplete) << length;
}

TEST(GzipDecoder, takesAnEmptyBodyForComplete)
{
    EXPECT_TRUE(GzipDecoder().isComplete());
}

TEST(GzipDecoder, unpacksSeveralStreamsInARow)
{
    const std::string bytes = packed(text) + packed("!");
    for (const std::size_t step : {std::size_t(1), std::size_t(5), bytes.size()}) {
        EXPECT_EQ(decoded(bytes, step).text, text + "!") << step;
        EXPECT_TRUE(decoded(bytes, step).isComplete);
    }
}

TEST(GzipDecoder, unpacksMoreThanItsBufferHolds)
{
    const std::string large(1'000'000, 'x');
    EXPECT_EQ(decoded(packed(large), 100).text, large);
}

TEST(GzipDecoder, refusesWhatIsNoGzip)
{
    EXPECT_FALSE(decoded("plain text, not packed at all", 100).isGzip);
    EXPECT_FALSE(decoded(packed(text) + "trailing text", 1000).isGzip);
}

TEST(GzipDecoder, stopsWhenItsOutputIsNotTaken)
{
    GzipDecoder decoder;
    const std::string bytes = packed(text);
    EXPECT_FALSE(decoder.decode(bytes.data(), bytes.size(), [](const char*, std::size_t) { return false; }));
}

} // namespace
