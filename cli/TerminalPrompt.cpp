#include "cli/TerminalPrompt.h"

#include "platform/console/Terminal.h"

namespace cli {

InputLine promptForSecret(const QString& prompt, const tljira::console::InterruptSignal& interrupts)
{
    const tljira::console::Terminal terminal;
    const auto hidden = terminal.hideTyping();
    if (!hidden)
        return {InputLine::Kind::NoTerminal, {}};
    terminal.write(prompt.toUtf8());
    const InputLine line = readLine(terminal.input(), interrupts);
    // The line end that was typed is not shown either.
    terminal.write("\n");
    return line;
}

} // namespace cli
