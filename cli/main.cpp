#include "cli/InterruptSignal.h"
#include "cli/StandardStreams.h"
#include "cli/Tool.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    cli::prepareStandardStreams();
    cli::InterruptSignal interrupts;
    QCoreApplication application(argc, argv);
    // Names the folders of the tool's settings and cookies.
    QCoreApplication::setApplicationName(QStringLiteral("tljira"));
    return cli::Tool(interrupts).run(QCoreApplication::arguments());
}
