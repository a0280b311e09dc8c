#include "bench/Bench.h"
#include "bench/Comparison.h"
#include "standin/Server.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace bench {

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using namespace std::chrono_literals;

constexpr double longestInterrupt = 0.1;
constexpr long long begun = 1 << 20;
/// Bytes of an answer whose end nobody waits for.
constexpr long long endless = 1LL << 40;
constexpr int patience = 30'000;

/// A server that keeps the tool waiting, or busy, for ever.
struct Trap
{
    const char* what;
    std::vector<std::string> command;
    Match match;
    Fault fault;
    bool (*holds)(const standin::Server&);
};

bool isHeld(const standin::Server& server)
{
    return server.heldCount() == 1;
}

bool isFlowing(const standin::Server& server)
{
    const auto request = server.lastRequest();
    return request.bodyLength + request.sentBodyBytes >= begun;
}

/// A file with a hole: it takes no room.
std::string largeFile(const Bench& bench)
{
    const std::string path = bench.folder + "/endless.tessaloom";
    std::ofstream(path).put('x');
    std::filesystem::resize_file(path, static_cast<std::uintmax_t>(4 * bench.large));
    return path;
}

std::vector<Trap> traps(const Bench& bench)
{
    const auto id = bench.server.addAttachment("SOURCE-1", {.fileName = "endless.tessaloom", .syntheticSize = endless});
    const std::vector<std::string> lookUp = {"attachments", "SOURCE-1"};
    const std::vector<std::string> upload = {"upload", "SINK-1", largeFile(bench)};
    const std::vector<std::string> download = {"download", "SOURCE-1", std::to_string(id), "--to",
                                               bench.folder + "/caught"};
    const Match ofIssue = Match::on("/rest/api/2/issue/*"), ofUpload = Match::on("POST", "*/attachments"),
                ofContent = Match::on("/secure/attachment/*");
    const std::string brackets(60 << 20, '[');
    return {
        {"a look-up without an answer", lookUp, ofIssue, Fault().hold(Point::responseHead(0)), isHeld},
        {"the head of an answer that does not end", lookUp, ofIssue,
         Fault().fillerHeaders(90 << 10).hold(Point::responseHead(80 << 10)), isHeld},
        {"an answer that comes in drops", lookUp, ofIssue, Fault().status(200, brackets).drip(64 << 10, 10ms),
         isFlowing},
        {"an upload that nobody reads", upload, ofUpload, Fault().hold(Point::requestBody(begun)), isHeld},
        {"an upload that is read in sips", upload, ofUpload, Fault().sip(64 << 10, 1ms), isFlowing},
        {"an upload without an answer", upload, ofUpload, Fault().hold(Point::responseHead(0)), isHeld},
        {"a download that comes no further", download, ofContent, Fault().hold(Point::responseBody(begun)), isHeld},
        {"a download without end", download, ofContent, Fault(), isFlowing},
    };
}

/// From Ctrl-C until the tool has ended, in seconds.
double secondsToEnd(const Bench& bench, const Trap& trap)
{
    bench.server.forgetRequests();
    bench.server.misbehave(trap.match, trap.fault);
    QProcess tool;
    QStringList arguments = {QStringLiteral("--connect-to"), QString::fromStdString(bench.route())};
    for (const std::string& argument : trap.command)
        arguments.append(QString::fromStdString(argument));
    tool.start(QStringLiteral(TLJIRA_PATH), arguments);
    QElapsedTimer timer;
    timer.start();
    while (!trap.holds(bench.server)) {
        if (tool.waitForFinished(1) || timer.hasExpired(patience))
            throw std::runtime_error(std::string("tljira was not caught by ") + trap.what + ": " +
                                     tool.readAllStandardError().toStdString());
    }
    timer.restart();
    ::kill(static_cast<pid_t>(tool.processId()), SIGINT);
    if (!tool.waitForFinished(patience) || tool.exitCode() != 128 + SIGINT)
        throw std::runtime_error(std::string("tljira was not interrupted in ") + trap.what);
    const auto passed = std::chrono::nanoseconds(timer.nsecsElapsed());
    bench.server.behave();
    // A server that does not read cannot see that nobody is there any more.
    bench.server.release();
    while (bench.server.heldCount() > 0)
        QThread::yieldCurrentThread();
    return std::chrono::duration<double>(passed).count();
}

} // namespace

std::vector<Row> interruptCases(const Bench& bench)
{
    std::vector<Row> rows;
    for (const Trap& trap : traps(bench)) {
        std::vector<double> all;
        for (int run = 0; run < bench.runs; ++run)
            all.push_back(secondsToEnd(bench, trap));
        const double time = median(all);
        rows.push_back({std::string("Ctrl-C to the end of tljira, in ") + trap.what, seconds(time), "", "",
                        "at most 0.100 s", time <= longestInterrupt});
    }
    std::filesystem::remove(bench.folder + "/endless.tessaloom");
    return rows;
}

} // namespace bench
