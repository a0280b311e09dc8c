#include "platform/foundation/files/FileManager.h"
#include "tests/client/ClientTest.h"

#include <QDir>
#include <QFileInfo>

#include <ostream>
#include <zlib.h>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using namespace std::chrono_literals;

constexpr qint64 size = 2 << 20;
constexpr qint64 bombSize = 200 << 20;

enum class Direction { Download, Upload, LookUp };

/// What a server does, and what the callers of each direction hear of it: "done", the code of a network error, the
/// client's own error, or both of its two ends.
struct Misdeed
{
    const char* name;
    Fault (*fault)();
    const char* download;
    const char* upload;
    const char* lookUp;
};

std::string head(const char* fields)
{
    return std::string("HTTP/1.1 200 OK\r\nContent-Type: application/json\r\n") + fields + "\r\n";
}

Fault floodOfCookies()
{
    Fault fault;
    for (int i = 0; i < 3000; ++i)
        fault.header("Set-Cookie", "flood" + std::to_string(i) + "=" + std::string(60, 'x'));
    return fault;
}

/// A thousand times larger than it comes.
std::string makePackedZeros()
{
    std::string packed;
    z_stream stream = {};
    deflateInit2(&stream, 9, Z_DEFLATED, 15 + 16, 9, Z_DEFAULT_STRATEGY);
    std::string zeros(1 << 20, '\0');
    char out[1 << 14];
    for (int mebibyte = 1; mebibyte <= bombSize >> 20; ++mebibyte) {
        stream.next_in = reinterpret_cast<Bytef*>(zeros.data());
        stream.avail_in = static_cast<uInt>(zeros.size());
        do {
            stream.next_out = reinterpret_cast<Bytef*>(out);
            stream.avail_out = sizeof out;
            deflate(&stream, mebibyte == bombSize >> 20 ? Z_FINISH : Z_NO_FLUSH);
            packed.append(out, sizeof out - stream.avail_out);
        } while (stream.avail_out == 0);
    }
    deflateEnd(&stream);
    return packed;
}

const std::string& packedZeros()
{
    static const std::string packed = makePackedZeros();
    return packed;
}

Fault bomb()
{
    return Fault().status(200, packedZeros(), "application/json").header("Content-Encoding", "gzip");
}

const std::vector<Misdeed>& misdeeds()
{
    // clang-format off
    static const std::vector<Misdeed> all = {
        {"closesBeforeTheHead", [] { return Fault().close(Point::responseHead(0)); }, "-1005", "-1005", "-1005"},
        {"resetsBeforeTheHead", [] { return Fault().reset(Point::responseHead(0)); }, "-1005", "-1005", "-1005"},
        {"closesInTheHead", [] { return Fault().close(Point::responseHead(20)); }, "-1005", "-1005", "-1005"},
        {"resetsInTheHead", [] { return Fault().reset(Point::responseHead(20)); }, "-1005", "-1005", "-1005"},
        {"closesInTheBody", [] { return Fault().close(Point::responseBody(9)); }, "-1005", "-1005", "-1005"},
        {"resetsInTheBody", [] { return Fault().reset(Point::responseBody(9)); }, "-1005", "-1005", "-1005"},
        {"closesInTheRequest", [] { return Fault().close(Point::requestBody(size / 2)); }, "done", "-1005", "done"},
        {"resetsInTheRequest", [] { return Fault().reset(Point::requestBody(size / 2)); }, "done", "-1005", "done"},
        {"announcesMoreThanItSends", [] { return Fault().announce(1); }, "-1005", "-1005", "-1005"},
        {"sendsNoLength", [] { return Fault().withoutLength(); }, "done", "done", "done"},
        {"sendsChunks", [] { return Fault().chunked(); }, "done", "done", "done"},
        {"leavesAChunkIncomplete", [] { return Fault().chunked(9); }, "-1005", "-1005", "-1005"},
        {"leavesOutTheLastChunk", [] { return Fault().chunked(5); }, "-1005", "-1005", "-1005"},
        {"packs", [] { return Fault().gzip(); }, "done", "done", "done"},
        {"packsAndCutsTheStream", [] { return Fault().gzip(8); }, "-1016", "-1016", "-1016"},
        {"saysPackedWhereNothingIs", [] { return Fault().status(200, "{}", "application/json").header("Content-Encoding", "gzip"); }, "-1016", "-1016", "-1016"},
        {"packsInAWayThatNobodyKnows", [] { return Fault().status(200, "{}", "application/json").header("Content-Encoding", "br"); }, "-1016", "-1016", "-1016"},
        {"sendsWhatGrowsInMemory", [] { return bomb(); }, "done", "-1103", "-1103"},
        {"sendsAHeadWithoutEnd", [] { return Fault().fillerHeaders(1 << 20); }, "-1103", "-1103", "-1103"},
        {"sendsAFieldWithoutEnd", [] { return Fault().header("X-Long", std::string(1 << 20, 'x')); }, "-1103", "-1103", "-1103"},
        {"floodsWithCookies", [] { return floodOfCookies(); }, "done", "done", "done"},
        {"speaksAnotherProtocol", [] { return Fault().raw("SSH-2.0-OpenSSH_9.2\r\n"); }, "-1017", "-1017", "-1017"},
        {"saysNothing", [] { return Fault().raw(""); }, "-1005", "-1005", "-1005"},
        {"namesTwoLengths", [] { return Fault().raw(head("Content-Length: 2\r\nContent-Length: 3\r\n") + "{}"); }, "-1005", "-1005", "-1005"},
        {"namesALengthBelowZero", [] { return Fault().raw(head("Content-Length: -1\r\n") + "{}"); }, "-1017", "-1017", "-1017"},
        {"redirectsInALoop", [] { return Fault().redirectToItself(); }, "-1007", "-1007", "-1007"},
        {"redirectsToAnotherProtocol", [] { return Fault().redirect("ftp://jira.example.test/x"); }, "-1002", "-1002", "-1002"},
        {"redirectsToNowhere", [] { return Fault().status(302, "moved"); }, "done", "Fatal error 302, done", "invalid sessioin 302"},
        {"redirectsToADeadHost", [] { return Fault().redirect("http://dead.example.test/x"); }, "-1004", "-1004", "-1004"},
        {"asksForALogin", [] { return Fault().status(200, "<html>Please log in</html>", "text/html"); }, "done", "Fatal error 200, done", "done"},
        {"refuses", [] { return Fault().status(403, "no"); }, "done", "Fatal error 403, done", "invalid sessioin 403"},
        {"isOverloaded", [] { return Fault().tooManyRequests(1); }, "done", "(null) 429", "invalid sessioin 429"},
        {"answersBeforeItHasRead", [] { return Fault().status(413, "too large").beforeBody(); }, "done", "Fatal error 413, done", "invalid sessioin 413"},
        {"sendsDropByDrop", [] { return Fault().status(200, "[{}]", "application/json").drip(1, 5ms); }, "done", "done", "done"},
        {"readsSipBySip", [] { return Fault().sip(64 << 10, 1ms); }, "done", "done", "done"},
    };
    // clang-format on
    return all;
}

struct Case
{
    const Misdeed* misdeed;
    Direction direction;

    const char* expected() const
    {
        switch (direction) {
        case Direction::Download:
            return misdeed->download;
        case Direction::Upload:
            return misdeed->upload;
        case Direction::LookUp:
            break;
        }
        return misdeed->lookUp;
    }
};

std::vector<Case> cases()
{
    std::vector<Case> all;
    for (const Misdeed& misdeed : misdeeds()) {
        for (const Direction direction : {Direction::Download, Direction::Upload, Direction::LookUp})
            all.push_back({&misdeed, direction});
    }
    return all;
}

std::string nameOf(const testing::TestParamInfo<Case>& info)
{
    static constexpr const char* directions[] = {"InADownload", "InAnUpload", "InALookUp"};
    return std::string(info.param.misdeed->name) + directions[static_cast<int>(info.param.direction)];
}

void PrintTo(const Case& testCase, std::ostream* stream)
{
    *stream << testCase.misdeed->name;
}

/// A server that does wrong ends a request, once, with what it means for its caller; it leaves nothing on the disk,
/// does not fill the memory, and harms no later request.
class HostileServerTest : public tests::ClientTest, public testing::WithParamInterface<Case>
{
protected:
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    // A sanitizer keeps freed memory for a while, and notes on all that is in use.
    static constexpr qint64 allowance = 500 << 20;
#else
    static constexpr qint64 allowance = 100 << 20;
#endif

    void SetUp() override
    {
        logIn();
        const auto id = server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .syntheticSize = size});
        link = QStringLiteral("http://jira.example.test/secure/attachment/%1/plan.tessaloom").arg(id);
        writeFile("source", QByteArray(size, 'x'));
        writeFile("saved", "old bytes");
        QDir().mkpath(path("temporary"));
        qputenv("TMPDIR", path("temporary").toUtf8());
    }

    /// What its caller hears.
    std::string act()
    {
        events.clear();
        switch (GetParam().direction) {
        case Direction::Download:
            client->downloadFile(link, downloadCallBack(), path("saved"));
            break;
        case Direction::Upload:
            client->uploadFileInIssue(path("source"), QStringLiteral("a.bin"), QStringLiteral("ABC-1"),
                                      completionCallBack(), nullptr);
            break;
        case Direction::LookUp:
            client->getIssueObject(QStringLiteral("ABC-1"), issueCallBack());
            break;
        }
        EXPECT_TRUE(waitForEvents(1));
        return story();
    }

    std::string story() const
    {
        QStringList words;
        for (const std::string& event : events) {
            QString text = QString::fromStdString(event);
            text.remove(QStringLiteral("nil, ")).remove(QStringLiteral("NSURLErrorDomain "));
            if (text == QStringLiteral("(100, 100, no error, YES)") || text == QStringLiteral("issue, no error") ||
                text == QStringLiteral("no error"))
                text = QStringLiteral("done");
            if (text.startsWith(QStringLiteral("(0, 0, ")))
                text = text.section(QStringLiteral(", "), 2, 2);
            words.append(text);
        }
        return words.join(QStringLiteral(", ")).toStdString();
    }

    void expectFileAsTold(bool isDone) const
    {
        const auto& answer = fault.answer();
        std::string expected = "old bytes";
        if (isDone)
            expected = answer ? answer->body : standin::Server::pattern(0, size);
        if (isDone && expected == packedZeros())
            EXPECT_EQ(QFileInfo(path("saved")).size(), bombSize);
        else
            EXPECT_TRUE(tests::contentsOf(path("saved")) == QByteArray::fromStdString(expected));
        EXPECT_EQ(tljira::FileManager::filesBelowPath(path("temporary")), QStringList());
    }

    /// The most memory that the process has held so far.
    static qint64 peakBytes()
    {
        const QByteArray status = tests::contentsOf(QStringLiteral("/proc/self/status")).value_or(QByteArray());
        const qsizetype start = status.indexOf("VmHWM:") + 6;
        return status.mid(start, status.indexOf("kB", start) - start).trimmed().toLongLong() * 1024;
    }

    const Fault fault = GetParam().misdeed->fault();
    QString link;
};

TEST_P(HostileServerTest, endsTheRequestAndHarmsNothing)
{
    const qint64 before = peakBytes();
    ASSERT_GT(before, 0);
    server.misbehave(Match(), fault);
    const std::string heard = act();
    EXPECT_EQ(heard, GetParam().expected());
    EXPECT_LT(peakBytes() - before, allowance);
    expectFileAsTold(GetParam().direction == Direction::Download && heard == "done");
    server.behave();
    EXPECT_EQ(act(), "done");
}

INSTANTIATE_TEST_SUITE_P(Table, HostileServerTest, testing::ValuesIn(cases()), nameOf);

} // namespace
