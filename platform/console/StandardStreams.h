#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tljira::console {

/// Before anything else: a reader that goes away becomes an error of writing, and a stream that is closed becomes an
/// empty one, so that no file takes its number.
void prepareStandardStreams();

/// What stopped the output, in the system's words; nothing when all was written.
std::optional<QString> writeOutput(const QByteArray& bytes);

/// To standard error, as far as it takes it.
void writeError(const QByteArray& bytes);

bool isErrorTerminal();
/// Width of the terminal at standard error, 80 when it does not say.
int terminalColumns();

} // namespace tljira::console
