#pragma once

#include "cli/Arguments.h"
#include "cli/Command.h"
#include "client/JAController.h"
#include "platform/console/InterruptSignal.h"

#include <memory>
#include <vector>

namespace cli {

/// What commands work with.
struct Environment
{
    std::shared_ptr<JAController> client;
    /// For a command that waits without running the event loop.
    const tljira::console::InterruptSignal& interrupts;
    bool showsProgress = false;
};

/// One command as the user types it.
struct CommandDescription
{
    QString name;
    QStringList operands;
    /// The options that mean something to it, beyond those that every command takes.
    QStringList options;
    /// Whether it asks a server that an earlier login has set.
    bool needsServer = true;
    /// What is wrong with the operands and options that were given; nothing when they are in order.
    std::optional<QString> (*problem)(const Arguments&);
    std::unique_ptr<Command> (*make)(const Arguments&, const Environment&);
    /// How many of the last operands may be left out, as far as `problem` does not mind.
    qsizetype optionalOperands = 0;
    /// Whether it begins when the session or the token is there, which may have to be read from the keyring first.
    bool needsLogin = true;
};

const std::vector<CommandDescription>& commandTable();

/// Null for a word that is no command.
const CommandDescription* findCommand(const QString& name);

} // namespace cli
