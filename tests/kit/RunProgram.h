#pragma once

#include "tests/kit/Printers.h"

#include <QProcess>
#include <QStringList>

#include <string>

namespace tests {

/// Otherwise Qt lends the memory of this process to the new one until that has its own program, and the thread
/// sanitizer loses sight of what the lending thread locks from then on.
void keepMemoryApart(QProcess& process);

/// What a program that ran to its end left.
struct Outcome
{
    int status = -1;
    std::string output;
    std::string error;
};

Outcome runProgram(const QString& program, const QStringList& arguments,
                   const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());

/// The lines of a text without the empty ones.
QStringList lines(const std::string& text);

} // namespace tests
