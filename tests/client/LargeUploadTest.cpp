#include "tests/client/ClientTest.h"

#include <QFile>

namespace {

using testing::ElementsAre;

class LargeUploadTest : public tests::ClientTest
{
protected:
    LargeUploadTest()
        : ClientTest(standin::Options::forMeasuring())
    {
    }

    /// The most memory that the process has held so far.
    static qint64 peakBytes()
    {
        const QByteArray status = tests::contentsOf(QStringLiteral("/proc/self/status")).value_or(QByteArray());
        const qsizetype start = status.indexOf("VmHWM:") + 6;
        return status.mid(start, status.indexOf("kB", start) - start).trimmed().toLongLong() * 1024;
    }
};

TEST_F(LargeUploadTest, sendsMoreThanFourGibibytesWithoutHoldingThem)
{
    const qint64 size = (qint64(4) << 30) + 1;
    QFile sparse(path("sparse"));
    ASSERT_TRUE(sparse.open(QIODevice::WriteOnly));
    ASSERT_TRUE(sparse.resize(size));
    logIn();

    const qint64 peakBefore = peakBytes();
    std::pair<qint64, qint64> last;
    client->uploadFileInIssue(sparse.fileName(), QStringLiteral("a.bin"), QStringLiteral("ABC-1"), completionCallBack(),
                              [&last](qint64 sent, qint64 expected) {
                                  last = {sent, expected};
                              });
    ASSERT_TRUE(tests::waitUntil([this] { return !events.empty(); }, std::chrono::minutes(18)));
    EXPECT_THAT(events, ElementsAre("no error"));

    const auto attachments = server.attachments("ABC-1");
    ASSERT_EQ(attachments.size(), 1u);
    EXPECT_EQ(attachments[0].size, size);
    EXPECT_EQ(server.lastRequest().header("Content-Length"), std::to_string(size + 239));
    EXPECT_EQ(last, std::make_pair(size + 239, size + 239));
    EXPECT_GT(peakBefore, 0);
    EXPECT_LT(peakBytes() - peakBefore, 64 << 20);
}

} // namespace
