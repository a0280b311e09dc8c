#include "cli/LogOutput.h"
#include "cli/Tool.h"
#include "platform/console/InterruptSignal.h"
#include "platform/console/StandardStreams.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    tljira::console::prepareStandardStreams();
    cli::showLog(false);
    tljira::console::InterruptSignal interrupts;
    QCoreApplication application(argc, argv);
    // Names the folders of the tool's settings and cookies.
    QCoreApplication::setApplicationName(QStringLiteral("tljira"));
    return cli::Tool(interrupts).run(QCoreApplication::arguments());
}
