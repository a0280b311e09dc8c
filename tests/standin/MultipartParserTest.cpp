#include "standin/MultipartParser.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using standin::MultipartParser;
using standin::PartHeader;

struct Part
{
    std::string name;
    std::string bytes;
    bool hasEnded = false;

    bool operator==(const Part&) const = default;
};

/// Feeds a parser and keeps what it hands out.
class Reader
{
public:
    Reader()
        : parser("frontier", {.begin =
                                  [this](const PartHeader& header) {
                                      parts.push_back({header.fieldName, {}, false});
                                  },
                              .data = [this](std::string_view bytes) { parts.back().bytes += bytes; },
                              .end = [this] { parts.back().hasEnded = true; }})
    {
    }

    std::vector<Part> parts;
    MultipartParser parser;
};

std::string part(const std::string& name, const std::string& bytes)
{
    return "--frontier\r\nContent-Disposition: form-data; name=" + name + "\r\n\r\n" + bytes + "\r\n";
}

/// Everything in it that looks like a delimiter is not one.
const std::string misleading = "\r\n--fronti\r\n--frontie\r\r\n\r\n--\r\n-\n--frontier\r\r\n--Frontier";
const std::string body = part("a", misleading) + part("b", "") + part("c", "x") + "--frontier--\r\nepilogue";
const std::vector<Part> expected = {{"a", misleading, true}, {"b", "", true}, {"c", "x", true}};

TEST(MultipartParser, handsOutTheParts)
{
    Reader reader;
    reader.parser.feed(body);
    EXPECT_EQ(reader.parts, expected);
    EXPECT_TRUE(reader.parser.isComplete());
}

TEST(MultipartParser, doesSoAtEverySplit)
{
    for (std::size_t split = 0; split <= body.size(); ++split) {
        Reader reader;
        reader.parser.feed(std::string_view(body).substr(0, split));
        reader.parser.feed(std::string_view(body).substr(split));
        EXPECT_EQ(reader.parts, expected) << split;
        EXPECT_TRUE(reader.parser.isComplete()) << split;
    }
}

TEST(MultipartParser, doesSoAtEveryPairOfSplits)
{
    const std::string_view bytes = body;
    for (std::size_t first = 0; first <= bytes.size(); ++first) {
        for (std::size_t second = first; second <= bytes.size(); ++second) {
            Reader reader;
            reader.parser.feed(bytes.substr(0, first));
            reader.parser.feed(bytes.substr(first, second - first));
            reader.parser.feed(bytes.substr(second));
            ASSERT_EQ(reader.parts, expected) << first << " " << second;
        }
    }
}

TEST(MultipartParser, doesSoByteByByte)
{
    Reader reader;
    for (const char byte : body)
        reader.parser.feed({&byte, 1});
    EXPECT_EQ(reader.parts, expected);
    EXPECT_TRUE(reader.parser.isComplete());
}

TEST(MultipartParser, skipsAPreamble)
{
    Reader reader;
    reader.parser.feed("preamble --frontier\r\n" + body);
    EXPECT_EQ(reader.parts, expected);
}

TEST(MultipartParser, isNotCompleteBeforeTheClosingDelimiter)
{
    for (const std::string end : {"", "\r\n", "\r\n--frontier", "\r\n--frontier-"}) {
        Reader reader;
        reader.parser.feed(part("a", "bytes") + end);
        EXPECT_FALSE(reader.parser.isComplete()) << end;
        EXPECT_FALSE(reader.parser.hasFailed()) << end;
    }
}

TEST(MultipartParser, failsWhenSomethingElseFollowsADelimiter)
{
    Reader reader;
    reader.parser.feed("--frontierX\r\n");
    EXPECT_TRUE(reader.parser.hasFailed());
}

TEST(MultipartParser, failsWhenAPartsHeadersNeverEnd)
{
    Reader reader;
    reader.parser.feed("--frontier\r\nX: " + std::string(20000, 'x'));
    EXPECT_TRUE(reader.parser.hasFailed());
}

TEST(MultipartParser, aDelimiterNeedsTheWholeLineEndBeforeIt)
{
    Reader reader;
    reader.parser.feed(part("a", "x\n--frontier--"));
    EXPECT_EQ(reader.parts, (std::vector<Part>{{"a", "x\n--frontier--", false}}));
    EXPECT_FALSE(reader.parser.isComplete());
}

} // namespace
