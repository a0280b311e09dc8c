#include "tests/cli/ToolRun.h"

#include <csignal>

namespace tests {

QString toolPath()
{
    return QStringLiteral(TLJIRA_PATH);
}

ToolRun::ToolRun(const QStringList& arguments, const QProcessEnvironment& environment, const QString& folder)
{
    m_process.setProcessEnvironment(environment);
    m_process.setWorkingDirectory(folder);
    m_process.start(toolPath(), arguments);
    m_process.waitForStarted();
}

ToolRun::~ToolRun()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

void ToolRun::sendInput(const QByteArray& bytes)
{
    m_process.write(bytes);
    m_process.closeWriteChannel();
}

void ToolRun::sendSignal(int number) const
{
    ::kill(static_cast<pid_t>(m_process.processId()), number);
}

int ToolRun::status()
{
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(60000))
        return -1;
    return m_process.exitStatus() == QProcess::CrashExit ? 1000 + m_process.exitCode() : m_process.exitCode();
}

QByteArray ToolRun::output()
{
    return m_process.readAllStandardOutput();
}

QByteArray ToolRun::error()
{
    return m_process.readAllStandardError();
}

bool ToolRun::hasGivenUpWaiting()
{
    m_process.setReadChannel(QProcess::StandardError);
    return status() == 1 && m_process.peek(m_process.bytesAvailable()).endsWith("another process keeps it locked.\n");
}

} // namespace tests
