#include "download/DownloadFolder.h"

#include "platform/foundation/files/TemporaryDirectory.h"
#include "tests/download/DownloadTest.h"
#include "tests/kit/SmallDisk.h"

#include <QDir>
#include <QProcess>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using namespace std::chrono_literals;
using testing::ElementsAre;

class HostProcessesTest : public tests::DownloadTest
{
protected:
    QStringList arguments(const char* fileName) const
    {
        return {QString::number(server.port()), QString::fromUtf8(fileName)};
    }

    static void start(QProcess& host, const QStringList& arguments)
    {
        host.start(QStringLiteral(DOWNLOAD_HOST), arguments);
        ASSERT_TRUE(host.waitForStarted());
    }

    static QStringList outputOf(QProcess& host)
    {
        EXPECT_TRUE(host.waitForFinished(60'000));
        EXPECT_EQ(host.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(host.exitCode(), 0) << host.readAllStandardError().toStdString();
        return QString::fromUtf8(host.readAllStandardOutput()).trimmed().split(u'\n');
    }

    void holdDownloads(int count)
    {
        server.misbehave(Match::on("*/secure/*").limited(count), Fault().hold(Point::responseBody(500'000)));
    }

    void waitForHeldExchanges(std::size_t count)
    {
        ASSERT_TRUE(tests::waitUntil([&] { return server.heldCount() == count; }));
    }

    static QString fileNamed(const char* name) { return DownloadFolder::path() + u'/' + QString::fromUtf8(name); }

    static QByteArray bytesOf(qint64 size)
    {
        return QByteArray::fromStdString(standin::Server::pattern(0, static_cast<std::size_t>(size)));
    }
};

TEST_F(HostProcessesTest, twoDownloadAtTheSameTime)
{
    attach({.fileName = "a.tessaloom", .syntheticSize = 1'000'000});
    attach({.fileName = "b.tessaloom", .syntheticSize = 2'000'000});
    holdDownloads(2);
    QProcess first;
    QProcess second;
    start(first, arguments("a.tessaloom"));
    waitForHeldExchanges(1);
    start(second, arguments("b.tessaloom"));
    waitForHeldExchanges(2);
    server.release();
    EXPECT_THAT(outputOf(first), ElementsAre(QStringLiteral("DONE"), fileNamed("a.tessaloom.tessaloom")));
    EXPECT_THAT(outputOf(second), ElementsAre(QStringLiteral("DONE"), fileNamed("b.tessaloom.tessaloom")));
    EXPECT_EQ(tests::contentsOf(fileNamed("a.tessaloom.tessaloom")), bytesOf(1'000'000));
    EXPECT_EQ(tests::contentsOf(fileNamed("b.tessaloom.tessaloom")), bytesOf(2'000'000));
}

TEST_F(HostProcessesTest, twoDownloadTheSameFileAtTheSameTime)
{
    attach({.fileName = "a.tessaloom", .syntheticSize = 1'000'000});
    holdDownloads(2);
    QProcess first;
    QProcess second;
    start(first, arguments("a.tessaloom"));
    start(second, arguments("a.tessaloom"));
    waitForHeldExchanges(2);
    server.release();
    EXPECT_EQ(outputOf(first).value(0), QStringLiteral("DONE"));
    EXPECT_EQ(outputOf(second).value(0), QStringLiteral("DONE"));
    EXPECT_EQ(tests::contentsOf(fileNamed("a.tessaloom.tessaloom")), bytesOf(1'000'000));
}

TEST_F(HostProcessesTest, oneQuitsInTheMiddleOfADownload)
{
    attach({.fileName = "a.tessaloom", .syntheticSize = 1'000'000});
    server.misbehave(Match::on("*/secure/*"), Fault().drip(20'000, 20ms).hold(Point::responseBody(500'000)));
    QProcess host;
    start(host, arguments("a.tessaloom") << QStringLiteral("quit"));
    outputOf(host);
    EXPECT_FALSE(QFileInfo::exists(fileNamed("a.tessaloom.tessaloom")));
    ASSERT_TRUE(tests::waitUntil([this] { return server.openConnectionCount() <= 1; }));
}

TEST_F(HostProcessesTest, oneSaysThatTheDiskIsFull)
{
    const tests::SmallDisk disk(QDir::tempPath(), 256);
    if (!disk.isThere())
        GTEST_SKIP() << "this system lets nobody mount a small disk";
    attach({.fileName = "a.tessaloom", .syntheticSize = 1'000'000});
    QProcess host;
    start(host, arguments("a.tessaloom"));
    EXPECT_EQ(outputOf(host).value(0), QStringLiteral("The download couldn’t be saved because the disk is full."));
}

} // namespace
