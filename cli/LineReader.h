#pragma once

#include <QString>

namespace cli {

/// One line that was read, without its line end.
struct InputLine
{
    enum class Kind { Line, NoLine, TooLong, Interrupted, NoTerminal };

    Kind kind = Kind::NoLine;
    QString text;
};

/// Waits for a line on `descriptor` and reads no byte beyond it. `interruptDescriptor` ends the wait as soon as it is
/// readable; nothing is taken from it.
InputLine readLine(int descriptor, int interruptDescriptor);

} // namespace cli
