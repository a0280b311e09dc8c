#include "cli/LogOutput.h"

#include "cli/Outcome.h"
#include "platform/console/StandardStreams.h"

#include <QLoggingCategory>

#include <cstdlib>

namespace cli {

namespace {

void showMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    tljira::console::writeError(message.toUtf8() + '\n');
    // What Qt cannot go on without is no mistake of the program's.
    if (type == QtFatalMsg)
        std::_Exit(ExitStatus::Failed);
}

void dropMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtFatalMsg)
        showMessage(type, context, message);
}

} // namespace

void showLog(bool isShown)
{
    qInstallMessageHandler(isShown ? showMessage : dropMessage);
    // Without the rule, lines that are dropped would be formatted first.
    QLoggingCategory::setFilterRules(isShown ? QString() : QStringLiteral("*=false"));
}

} // namespace cli
