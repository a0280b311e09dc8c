#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/LogSwitch.h"
#include "platform/foundation/values/Format.h"

#include <QLoggingCategory>

namespace tljira {

/// The category of every line of the platform log, "platform.log", on by default. A host routes it with
/// qInstallMessageHandler and silences it with setLogEnabled().
TL_EXPORT const QLoggingCategory& logCategory();

TL_EXPORT void writeLog(const QString& line);

/// Writes one line to the platform log, from any thread. The arguments are only formatted when the log is enabled and
/// somebody listens to the category.
template <typename... Arguments>
void log(const char16_t* text, const Arguments&... arguments)
{
    if (isLogEnabled() && logCategory().isInfoEnabled())
        writeLog(format(QString::fromUtf16(text), arguments...));
}

} // namespace tljira
