#include "tests/standin/JiraFixture.h"

#include <fstream>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool sanitizersTakeMemory = true;
#else
constexpr bool sanitizersTakeMemory = false;
#endif

namespace standin_tests {

namespace {

std::int64_t peakKilobytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:"))
            return std::atoll(line.c_str() + 6);
    }
    return -1;
}

constexpr std::int64_t gibibyte = std::int64_t{1} << 30;
constexpr std::int64_t allowedKilobytes = 8 * 1024;

class Memory : public JiraFixture
{
protected:
    Memory()
        : JiraFixture(standin::Options::forMeasuring())
        , piece(standin::Server::pattern(0, std::size_t{1} << 20))
    {
    }

    void SetUp() override
    {
        if (sanitizersTakeMemory)
            GTEST_SKIP() << "the sanitizer's own memory grows with the bytes that pass";
    }

    Reply uploadOf(std::int64_t pieces)
    {
        const std::string begin = "--frontier\r\nContent-Disposition: form-data; name=file; filename=a\r\n\r\n";
        const std::string end = "\r\n--frontier--\r\n";
        const auto length = begin.size() + static_cast<std::size_t>(pieces) * piece.size() + end.size();
        RawClient client(server.port());
        client.send(requestBytes("POST", attachmentsPath,
                                 uploadHeaders() + "Content-Length: " + std::to_string(length) + "\r\n"));
        client.send(begin);
        for (std::int64_t sent = 0; sent < pieces; ++sent)
            client.send(piece);
        client.send(end);
        return client.reply();
    }

    std::string piece;
};

TEST_F(Memory, anUploadOfAGibibyteCostsNone)
{
    uploadOf(1);
    const auto before = peakKilobytes();
    ASSERT_GT(before, 0);
    EXPECT_EQ(uploadOf(gibibyte >> 20).status, 200);
    EXPECT_EQ(server.attachments("DEMO-1").back().size, gibibyte);
    EXPECT_LT(peakKilobytes() - before, allowedKilobytes);
}

TEST_F(Memory, aDownloadOfAGibibyteCostsNone)
{
    server.addAttachment("DEMO-1", {.fileName = "a", .syntheticSize = gibibyte});
    server.addAttachment("DEMO-1", {.fileName = "b", .syntheticSize = 1 << 20});
    EXPECT_EQ(getAsAnna("/secure/attachment/10001/b").body.size(), std::size_t{1} << 20);
    const auto before = peakKilobytes();
    RawClient client(server.port());
    client.send(requestBytes("GET", "/secure/attachment/10000/a", cookieOfAnna()));
    for (std::int64_t got = 0; got < gibibyte;) {
        const auto bytes = client.read(65536);
        ASSERT_FALSE(bytes.empty());
        got += static_cast<std::int64_t>(bytes.size());
    }
    EXPECT_LT(peakKilobytes() - before, allowedKilobytes);
}

} // namespace

} // namespace standin_tests
