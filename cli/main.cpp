#include "cli/LogOutput.h"
#include "cli/SavedInKeyring.h"
#include "cli/TextMemory.h"
#include "cli/Tool.h"
#include "platform/console/InterruptSignal.h"
#include "platform/console/StandardStreams.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    cli::endWithoutTextMemory();
    tljira::console::prepareStandardStreams();
    cli::showLog(false);
    // Names the folders of the tool's settings and cookies, and what it has in the keyring.
    QCoreApplication::setApplicationName(QStringLiteral("tljira"));
    // GLib's event loop ends the process when it lacks a descriptor. Qt's own says so, see LogOutput. The keyring's
    // library knows none but GLib's.
    tljira::console::InterruptSignal interrupts;
    if (!cli::mayAskKeyring(argc, argv))
        qputenv("QT_NO_GLIB", "1");
    QCoreApplication application(argc, argv);
    return cli::Tool(interrupts).run(QCoreApplication::arguments());
}
