#include "platform/foundation/Log.h"

#include <atomic>

namespace tljira {

namespace {

// Constant from the first instruction on: a host may set it before any constructor has run.
constinit std::atomic<bool> enabled = true;

} // namespace

void setLogEnabled(bool isEnabled)
{
    enabled.store(isEnabled, std::memory_order_relaxed);
}

bool isLogEnabled()
{
    return enabled.load(std::memory_order_relaxed);
}

const QLoggingCategory& logCategory()
{
    // Never destroyed: threads may still log while the process exits.
    static const QLoggingCategory& category = *new QLoggingCategory("platform.log", QtInfoMsg);
    return category;
}

void writeLog(const QString& line)
{
    qCInfo(logCategory).noquote().nospace() << line;
}

} // namespace tljira
