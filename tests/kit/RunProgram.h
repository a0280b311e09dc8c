#pragma once

#include "tests/kit/Printers.h"

#include <QProcess>
#include <QStringList>

#include <string>

namespace tests {

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
