#pragma once

#include "cli/CommandTable.h"

#include <QEventLoop>

namespace cli {

/// One run of the tool: from the words of the command line to the exit status.
class Tool
{
public:
    explicit Tool(tljira::console::InterruptSignal& interrupts);

    /// Needs the application object; `words` starts with the program's name.
    int run(const QStringList& words);

private:
    Outcome perform(const Arguments& arguments);
    Outcome performCommand(const Arguments& arguments);
    void start(bool needsLogin);
    void interrupt(int signalNumber);
    void end(const Outcome& outcome);
    static int report(const Outcome& outcome);

    tljira::console::InterruptSignal& m_interrupts;
    std::unique_ptr<Command> m_command;
    QEventLoop m_loop;
    std::optional<Outcome> m_outcome;
    /// Once there was a signal, the status that it asks for.
    std::optional<int> m_interruptedStatus;
};

} // namespace cli
