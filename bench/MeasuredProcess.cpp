#include "bench/MeasuredProcess.h"

#include <QProcess>

#include <stdexcept>

namespace bench {

Measurement measureProcess(const std::vector<std::string>& command)
{
    QStringList arguments;
    for (const std::string& argument : command)
        arguments.append(QString::fromStdString(argument));
    QProcess measure;
    measure.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    measure.start(QStringLiteral(MEASURE_PATH), arguments);
    if (!measure.waitForFinished(-1) || measure.exitStatus() != QProcess::NormalExit || measure.exitCode() != 0)
        throw std::runtime_error(command.front() + " failed");
    const QList<QByteArray> figures = measure.readAllStandardOutput().trimmed().split(' ');
    return {figures.value(0).toDouble(), figures.value(1).toLongLong()};
}

} // namespace bench
