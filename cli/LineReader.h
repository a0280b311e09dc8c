#pragma once

#include "platform/console/Input.h"

#include <QString>

namespace cli {

/// One line that was read, without its line end.
struct InputLine
{
    enum class Kind { Line, NoLine, TooLong, Unreadable, Interrupted, NoTerminal };

    Kind kind = Kind::NoLine;
    QString text;
};

/// Waits for a line and reads no byte beyond it. An interrupt ends the wait and is not taken.
InputLine readLine(const tljira::console::Input& input, const tljira::console::InterruptSignal& interrupts);

} // namespace cli
