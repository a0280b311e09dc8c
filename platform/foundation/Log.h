#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/Format.h"

#include <QLoggingCategory>

namespace tljira {

/// The category of every line of the platform log, "platform.log", on by default. A host routes it with
/// qInstallMessageHandler and silences it with QLoggingCategory::setFilterRules.
TL_EXPORT const QLoggingCategory& logCategory();

TL_EXPORT void writeLog(const QString& line);

/// Writes one line to the platform log, from any thread. The arguments are only formatted when somebody listens to the
/// category.
template <typename... Arguments>
void log(const char16_t* text, const Arguments&... arguments)
{
    if (logCategory().isInfoEnabled())
        writeLog(format(QString::fromUtf16(text), arguments...));
}

} // namespace tljira
