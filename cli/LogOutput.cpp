#include "cli/LogOutput.h"

#include "platform/console/StandardStreams.h"

#include <QLoggingCategory>

namespace cli {

namespace {

void showMessage(QtMsgType, const QMessageLogContext&, const QString& message)
{
    tljira::console::writeError(message.toUtf8() + '\n');
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
