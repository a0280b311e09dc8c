#include "bench/Bench.h"
#include "bench/Comparison.h"
#include "standin/Server.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace bench {

namespace {

constexpr long long small = 1024;
/// Disk and scheduler make single transfers differ by a fifth: so many times the runs of other cases.
constexpr int transferRuns = 3;
constexpr double memoryAllowance = 8.0 * 1024 * 1024;

using Command = std::vector<std::string>;

std::string fileOfSize(const Bench& bench, long long size)
{
    const std::string path = bench.folder + "/" + std::to_string(size) + ".tessaloom";
    if (!std::filesystem::exists(path)) {
        std::ofstream(path).put('x');
        std::filesystem::resize_file(path, static_cast<std::uintmax_t>(size));
    }
    return path;
}

Command tool(const Bench& bench, Command arguments)
{
    Command command{TLJIRA_PATH, "--connect-to", bench.route()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

Command ourUpload(const Bench& bench, long long size)
{
    return tool(bench, {"upload", "SINK-1", fileOfSize(bench, size)});
}

Command peerUpload(const Bench& bench, long long size)
{
    return {"curl",
            "-sSf",
            "-b",
            bench.cookie,
            "-H",
            "X-Atlassian-Token: nocheck",
            "-F",
            "file=@" + fileOfSize(bench, size),
            bench.address("rest/api/2/issue/SINK-1/attachments")};
}

std::string announced(const Bench& bench, long long size)
{
    const std::string name = std::to_string(size) + ".tessaloom";
    for (const auto& attachment : bench.server.attachments("SOURCE-1")) {
        if (attachment.fileName == name)
            return std::to_string(attachment.id);
    }
    standin::NewAttachment attachment;
    attachment.fileName = name;
    attachment.syntheticSize = size;
    return std::to_string(bench.server.addAttachment("SOURCE-1", attachment));
}

Command ourDownload(const Bench& bench, long long size)
{
    return tool(bench, {"download", "SOURCE-1", announced(bench, size), "--to", bench.folder + "/ours"});
}

Command peerDownload(const Bench& bench, long long size)
{
    return {"curl",
            "-sSf",
            "-b",
            bench.cookie,
            "-o",
            bench.folder + "/peers",
            bench.address("secure/attachment/" + announced(bench, size) + "/" + std::to_string(size) + ".tessaloom")};
}

Row speedRow(const std::string& what, const Comparison& comparison)
{
    return {what,           seconds(comparison.ours), seconds(comparison.peer), times(comparison.ratio),
            "at most 1.00", comparison.ratio <= 1.0};
}

Comparison compareDownloads(const Bench& bench, long long size)
{
    // Neither begins with the other's file still on its way to the disk.
    const auto run = [&](const Command& command, const std::string& file) {
        const double seconds = measureProcess(command).seconds;
        std::filesystem::remove(file);
        return seconds;
    };
    return compare(
        transferRuns * bench.runs, [&] { return run(ourDownload(bench, size), bench.folder + "/ours"); },
        [&] { return run(peerDownload(bench, size), bench.folder + "/peers"); });
}

/// Peak memory of the command with the file of `size` beside the same command with a small one.
Row memoryRow(const Bench& bench, const std::string& what, Command (*command)(const Bench&, long long), long long size)
{
    const auto medianPeak = [&](long long bytes) {
        std::vector<double> peaks;
        for (int run = 0; run < bench.runs; ++run) {
            std::filesystem::remove(bench.folder + "/ours");
            peaks.push_back(static_cast<double>(measureProcess(command(bench, bytes)).peakBytes));
        }
        return median(peaks);
    };
    const double atSize = medianPeak(size);
    const double atSmall = medianPeak(small);
    return {what + ", peak memory (beside 1 KiB)",
            mebibytes(atSize),
            mebibytes(atSmall),
            times(atSize / atSmall),
            "at most 8 MiB more",
            atSize - atSmall <= memoryAllowance};
}

/// What is left of the time of a small file.
Row startRow(const Bench& bench)
{
    const Comparison comparison =
        compareProcesses(transferRuns * bench.runs, {TLJIRA_PATH, "--version"}, {"curl", "--version"});
    return {"the start of the process: --version (curl --version)",
            seconds(comparison.ours),
            seconds(comparison.peer),
            times(comparison.ratio),
            "stated",
            true};
}

/// What no program with these libraries goes below.
Row loadingRow(const Bench& bench)
{
    const Comparison comparison =
        compareProcesses(transferRuns * bench.runs, {LIBRARIES_ALONE_PATH}, peerUpload(bench, small));
    return {"a program that loads Qt Core and libcurl and does nothing (curl -F of 1 KiB)",
            seconds(comparison.ours),
            seconds(comparison.peer),
            times(comparison.ratio),
            "stated",
            true};
}

std::string named(const char* what, long long size)
{
    return std::string(what) + " of " + mebibytes(static_cast<double>(size));
}

} // namespace

std::vector<Row> transferCases(const Bench& bench)
{
    const long long large = bench.large;
    std::vector<Row> rows;
    rows.push_back(
        speedRow(named("upload", large) + ", whole process (curl -F)",
                 compareProcesses(transferRuns * bench.runs, ourUpload(bench, large), peerUpload(bench, large))));
    rows.push_back(speedRow(named("download", large) + ", whole process (curl -o)", compareDownloads(bench, large)));
    for (const long long size : {large, 4 * large}) {
        rows.push_back(memoryRow(bench, named("upload", size), ourUpload, size));
        rows.push_back(memoryRow(bench, named("download", size), ourDownload, size));
    }
    rows.push_back(startRow(bench));
    rows.push_back(loadingRow(bench));
    return rows;
}

} // namespace bench
