#include "bench/Bench.h"

#include <QProcess>

#include <sstream>
#include <stdexcept>

namespace bench {

namespace {

constexpr double longestCancel = 0.1;

} // namespace

std::vector<Row> cancelCases(const Bench& bench)
{
    QProcess process;
    process.start(QStringLiteral(CANCEL_TIMES_PATH), {QString::number(bench.runs)});
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw std::runtime_error("cannot measure cancels: " + process.readAllStandardError().toStdString());

    std::vector<Row> rows;
    std::istringstream lines(process.readAllStandardOutput().toStdString());
    double time = 0;
    for (std::string phase; lines >> time && std::getline(lines >> std::ws, phase);)
        rows.push_back(
            {"cancel to callback, in the " + phase, seconds(time), "", "", "at most 0.100 s", time <= longestCancel});
    return rows;
}

} // namespace bench
