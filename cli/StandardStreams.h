#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace cli {

/// Before anything else: a reader that goes away becomes an error of writing, a stream that is closed becomes an empty
/// one, so that no file takes its number, and the log is silent.
void prepareStandardStreams();

/// What stopped the output, in the system's words; nothing when all was written.
std::optional<QString> writeOutput(const QByteArray& bytes);

/// To standard error, as far as it takes it.
void writeError(const QByteArray& bytes);

bool isErrorTerminal();
/// Width of the terminal at standard error, 80 when it does not say.
int terminalColumns();

/// Lets the platform log and Qt's own messages through to standard error, or nothing at all of them.
void showLog(bool isShown);

} // namespace cli
