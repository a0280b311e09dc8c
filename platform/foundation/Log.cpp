#include "platform/foundation/Log.h"

#include "platform/foundation/Secrets.h"

#include <atomic>
#include <mutex>

namespace tljira {

namespace {

using Target = LogSettings::Target;

// Constant from the first instruction on: a host may set them before any constructor has run.
constinit std::atomic<bool> enabled = true;
constinit std::atomic<Target> target = Target::Category;

/// Inside the host's function, on this thread.
thread_local bool isTelling = false;

struct Settings
{
    static Settings& instance()
    {
        // Never destroyed: threads may still log while the process exits.
        static auto& settings = *new Settings;
        return settings;
    }

    LogSettings current()
    {
        const std::lock_guard lock(mutex);
        return settings;
    }

    /// Held while the host's function runs.
    std::mutex turn;
    std::mutex mutex;
    LogSettings settings;
};

void tell(const QString& line)
{
    auto& all = Settings::instance();
    const std::lock_guard lock(all.turn);
    const LogSettings settings = all.current();
    if (settings.target != Target::Function)
        return;
    isTelling = true;
    try {
        (*settings.function)(settings.showsSecrets ? withoutTokens(line) : withoutSecrets(line));
    } catch (...) {
        // Nobody else is to suffer for it.
    }
    isTelling = false;
}

} // namespace

void setLogEnabled(bool isEnabled)
{
    enabled.store(isEnabled, std::memory_order_relaxed);
}

bool isLogEnabled()
{
    return enabled.load(std::memory_order_relaxed);
}

void setLogSettings(const LogSettings& settings)
{
    auto& all = Settings::instance();
    std::unique_lock turn(all.turn, std::defer_lock);
    if (!isTelling)
        turn.lock();
    const std::lock_guard lock(all.mutex);
    all.settings = settings;
    if (settings.target == Target::Function && (!settings.function || !*settings.function))
        all.settings.target = Target::Nowhere;
    target.store(all.settings.target, std::memory_order_relaxed);
}

bool isLogHeard()
{
    if (!isLogEnabled())
        return false;
    switch (target.load(std::memory_order_relaxed)) {
    case Target::Category:
        return logCategory().isInfoEnabled();
    case Target::Function:
        return !isTelling;
    case Target::Nowhere:
        break;
    }
    return false;
}

const QLoggingCategory& logCategory()
{
    // Never destroyed: threads may still log while the process exits.
    static const QLoggingCategory& category = *new QLoggingCategory("platform.log", QtInfoMsg);
    return category;
}

void writeLog(const QString& line)
{
    const LogSettings settings = Settings::instance().current();
    if (settings.target == Target::Function)
        tell(line);
    else if (settings.target == Target::Category)
        qCInfo(logCategory).noquote().nospace() << (settings.showsSecrets ? withoutTokens(line) : withoutSecrets(line));
}

} // namespace tljira
