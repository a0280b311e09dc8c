#include "tests/torture/Program.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <csignal>
#include <new>
#include <stdexcept>
#include <sys/mman.h>

namespace torture {

namespace {

/// Nothing here takes a second; the machine may be busy. Less than a request waits for an answer that does not come.
constexpr int longestRunMs = 50'000;

} // namespace

Program::Program(const QString& folder)
    : m_boardPath(folder + QStringLiteral("/board"))
    , m_changesPath(folder + QStringLiteral("/changes"))
{
    QFile file(m_boardPath);
    if (!file.open(QIODevice::ReadWrite) || !file.resize(sizeof(Board)))
        throw std::runtime_error("there is no room for the board");
    void* const memory = mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED, file.handle(), 0);
    if (memory == MAP_FAILED)
        throw std::runtime_error("there is no memory for the board");
    m_board = new (memory) Board;
}

Program::~Program()
{
    munmap(m_board, sizeof(Board));
}

void Program::give(const Orders& orders)
{
    m_board = new (m_board) Board;
    m_board->function = orders.function;
    m_board->call = orders.call;
    m_board->lasts = orders.lasts;
    m_board->error = orders.error;
    m_board->killAtChange = orders.killAtChange;
    m_board->killHalfway = orders.killHalfway;
    m_board->logsChanges = orders.logsChanges;
    QFile changes(m_changesPath);
    if (orders.logsChanges && !changes.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw std::runtime_error("changes cannot be logged");
}

void Program::take(Run& run) const
{
    for (std::size_t index = 0; index < functionCount; ++index)
        run.calls[index] = m_board->calls[index];
    run.changes = m_board->changes;
    run.refusals = m_board->refusals;
    run.wasOutputSilenced = m_board->silencedOutput > 0;
    run.wasErrorSilenced = m_board->silencedError > 0;
    run.firstRefused = QByteArray(m_board->firstRefused.data());
}

Run Program::run(const Command& command, const Orders& orders)
{
    give(orders);
    QProcessEnvironment environment = command.environment;
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(TORTURE_LIBRARY));
    environment.insert(QStringLiteral("TORTURE_BOARD"), m_boardPath);
    environment.insert(QStringLiteral("TORTURE_CHANGES"), m_changesPath);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(command.folder);
    process.setStandardInputFile(command.input.isEmpty() ? QProcess::nullDevice() : command.input);
    QElapsedTimer time;
    time.start();
    process.start(command.program, command.arguments);
    if (!process.waitForStarted())
        throw std::runtime_error(command.program.toStdString() + " does not start");
    if (orders.killAfter.count() > 0) {
        QThread::usleep(static_cast<unsigned long>(orders.killAfter.count()));
        process.kill();
    }
    Run run;
    run.hasHung = !process.waitForFinished(longestRunMs);
    run.time = std::chrono::microseconds(time.nsecsElapsed() / 1000);
    if (run.hasHung) {
        process.kill();
        process.waitForFinished();
    }
    const bool hasExited = process.exitStatus() == QProcess::NormalExit;
    run.status = hasExited ? process.exitCode() : -1;
    run.signal = hasExited ? 0 : process.exitCode();
    run.output = process.readAllStandardOutput();
    run.error = process.readAllStandardError();
    take(run);
    return run;
}

} // namespace torture
