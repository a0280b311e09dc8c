#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/LogSwitch.h"
#include "platform/foundation/values/Format.h"

#include <QLoggingCategory>

#include <functional>
#include <memory>

namespace tljira {

/// The category of every line of the platform log, "platform.log", on by default. A host routes it with
/// qInstallMessageHandler and silences it with setLogEnabled().
const QLoggingCategory& logCategory();

/// Where the lines go, and what they hold.
struct LogSettings
{
    using Function = std::function<void(const QString& line)>;
    enum class Target { Category, Nowhere, Function };

    Target target = Target::Category;
    /// For Target::Function. Called on the thread that logs, one line at a time and in their order. What it logs itself
    /// goes nowhere, and what it throws costs the line.
    std::shared_ptr<const Function> function = {};
    /// Tokens are blanked in any case.
    bool showsSecrets = true;
};

/// From any thread, also from the function. When it returns an earlier function is not called any more, unless it is
/// that one which calls.
void setLogSettings(const LogSettings& settings);

/// Whether anybody listens.
TL_EXPORT bool isLogHeard();

TL_EXPORT void writeLog(const QString& line);

/// Writes one line to the platform log, from any thread. The arguments are only formatted when the log is enabled and
/// somebody listens.
template <typename... Arguments>
void log(const char16_t* text, const Arguments&... arguments)
{
    if (isLogHeard())
        writeLog(format(QString::fromUtf16(text), arguments...));
}

} // namespace tljira
