#pragma once

#include <QProcess>
#include <QStringList>

namespace tests {

/// The built tool.
QString toolPath();

/// One run of the built tool in a process of its own.
class ToolRun
{
public:
    ToolRun(const QStringList& arguments, const QProcessEnvironment& environment, const QString& folder);
    ~ToolRun();

    /// Closes its standard input behind `bytes`.
    void sendInput(const QByteArray& bytes);
    void sendSignal(int number) const;

    /// Waits for the end; 1000 and the signal's number when a signal ended it, -1 when it does not end.
    int status();
    /// Of an ended run.
    QByteArray output();
    QByteArray error();
    /// Waits for the end. Whether the run gave up because others kept a file locked for too long.
    bool hasGivenUpWaiting();

private:
    QProcess m_process;
};

} // namespace tests
