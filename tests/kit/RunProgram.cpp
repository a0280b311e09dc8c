#include "tests/kit/RunProgram.h"

#include <gtest/gtest.h>

namespace tests {

Outcome runProgram(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    const bool isEnded = process.waitForFinished(120000);
    EXPECT_TRUE(isEnded) << program.toStdString() << ": " << process.errorString().toStdString();
    const bool isOrderly = isEnded && process.exitStatus() == QProcess::NormalExit;
    return {isOrderly ? process.exitCode() : -1, process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

QStringList lines(const std::string& text)
{
    return QString::fromStdString(text).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace tests
