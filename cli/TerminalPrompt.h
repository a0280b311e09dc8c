#pragma once

#include "cli/LineReader.h"

namespace cli {

/// Asks for a secret at the controlling terminal, whatever standard input and output are. What is typed is not shown;
/// the terminal is as before when this returns, after an interruption too.
InputLine promptForSecret(const QString& prompt, const tljira::console::InterruptSignal& interrupts);

} // namespace cli
