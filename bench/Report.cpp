#include "bench/Report.h"

#include <QLibraryInfo>
#include <QSysInfo>
#include <QThread>

#include <cstdio>
#include <memory>

namespace bench {

namespace {

std::string formatted(const char* format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string firstLineOf(const char* command)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command, "r"), &pclose);
    char line[256] = "";
    if (!pipe || !std::fgets(line, sizeof line, pipe.get()))
        return "unknown";
    const std::string text = line;
    return text.substr(0, text.find_last_not_of(" \n") + 1);
}

} // namespace

std::string seconds(double value)
{
    return value < 0.001 ? formatted("%.1f µs", value * 1e6) : formatted("%.3f s", value);
}

std::string mebibytes(double bytes)
{
    return formatted("%.1f MiB", bytes / 1024 / 1024);
}

std::string times(double ratio)
{
    return formatted("%.2f", ratio);
}

std::string report(const std::vector<Row>& rows, int runs)
{
    std::string text = "# Benchmarks\n\n";
    text += "Medians of " + std::to_string(runs) +
            " runs at least, ours and the peer's in turn, over loopback. Quote the ratios: ";
    text += "the times depend on the machine.\n\n";
    text += "- machine: " + QSysInfo::prettyProductName().toStdString() + ", " +
            std::to_string(QThread::idealThreadCount()) + " cores\n";
    text += "- curl: " + firstLineOf("curl --version") + "\n";
    text += std::string("- Qt: ") + qVersion() + "\n\n";
    text += "| what | ours | peer | ratio | aim | met |\n|---|---|---|---|---|---|\n";
    for (const Row& row : rows) {
        text += "| " + row.what + " | " + row.ours + " | " + row.peer + " | " + row.ratio + " | " + row.aim + " | " +
                (row.isMet ? "yes" : "**no**") + " |\n";
    }
    return text;
}

} // namespace bench
