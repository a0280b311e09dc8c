#include "standin/ContentWriter.h"
#include "standin/Server.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace {

using namespace standin;

std::string bytesFrom(const Content& content, std::int64_t offset, std::size_t length)
{
    std::string bytes(length, '\0');
    EXPECT_TRUE(content.read(offset, bytes.data(), length));
    return bytes;
}

TEST(Content, ofBytesReadsAnywhere)
{
    const auto content = contentOfBytes("0123456789");
    EXPECT_EQ(content->size(), 10);
    EXPECT_EQ(bytesFrom(*content, 3, 4), "3456");
}

TEST(Content, ofAPatternDependsOnTheOffsetAlone)
{
    const auto content = contentOfPattern(std::int64_t{5} << 30);
    EXPECT_EQ(content->size(), std::int64_t{5} << 30);
    const std::int64_t offset = (std::int64_t{4} << 30) + 12345;
    const auto long_ = bytesFrom(*content, offset, 3000000);
    EXPECT_EQ(bytesFrom(*content, offset + 2000000, 500), long_.substr(2000000, 500));
    EXPECT_EQ(Server::pattern(offset, 3000000), long_);
}

TEST(Content, ofAPatternDiffersFromBlockToBlock)
{
    std::set<std::string> blocks;
    for (std::int64_t block = 0; block < 64; ++block)
        blocks.insert(Server::pattern(block << 20, 64));
    EXPECT_EQ(blocks.size(), 64U);
}

TEST(ContentWriter, keepsSmallAndLargeFilesAlike)
{
    for (const std::size_t size : {0, 1, 1 << 20, (1 << 20) + 1, 5 << 20}) {
        const auto bytes = Server::pattern(7, size);
        ContentWriter writer(Storage::keep, Digest::none);
        for (std::size_t offset = 0; offset < size; offset += 300000)
            writer.add(std::string_view(bytes).substr(offset, 300000));
        EXPECT_EQ(writer.size(), static_cast<std::int64_t>(size));
        const auto content = writer.finish();
        ASSERT_TRUE(content);
        EXPECT_TRUE(allBytes(*content) == bytes) << size;
    }
}

TEST(ContentWriter, leavesNoFileBehind)
{
    ContentWriter writer(Storage::keep, Digest::none);
    writer.add(std::string(3 << 20, 'x'));
    EXPECT_TRUE(std::filesystem::is_empty(std::filesystem::temp_directory_path()));
}

TEST(ContentWriter, intoTheSinkCountsAndDigestsOnly)
{
    ContentWriter writer(Storage::sink, Digest::crc32);
    writer.add("1234");
    writer.add("56789");
    EXPECT_EQ(writer.size(), 9);
    EXPECT_EQ(writer.digest(), "cbf43926");
    EXPECT_EQ(writer.finish(), nullptr);
}

TEST(ContentWriter, saysWhenTheBytesCannotBeStored)
{
    qputenv("TMPDIR", "/nowhere");
    ContentWriter writer(Storage::keep, Digest::none);
    writer.add(std::string(3 << 20, 'x'));
    EXPECT_FALSE(writer.isGood());
    EXPECT_EQ(writer.finish(), nullptr);
}

TEST(Digester, computesKnownDigests)
{
    const auto digest = [](Digest kind) {
        Digester digester(kind);
        digester.add("a");
        digester.add("bc");
        return digester.finish();
    };
    EXPECT_EQ(digest(Digest::sha256), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(digest(Digest::crc32), "352441c2");
    EXPECT_EQ(digest(Digest::none), "");
}

} // namespace
