#include "platform/toolkit/views/TransferRate.h"

#include "platform/foundation/values/Format.h"
#include "platform/toolkit/nib/InterfaceTexts.h"

#include <algorithm>
#include <cmath>

namespace tljira {

namespace {

using namespace std::chrono_literals;

constexpr auto shortestSample = 100ms;
constexpr auto betweenTexts = 1000ms;
constexpr auto untilSure = 5000ms;
constexpr double memoryInSeconds = 3;

constexpr double kilobyte = 1024;
constexpr qint64 kilobytesInMegabyte = 1024;
constexpr double megabyte = kilobyte * kilobytesInMegabyte;
constexpr double roundingError = 0.001;
constexpr qint64 minute = 60;
constexpr qint64 hour = 60 * minute;
constexpr qint64 day = 24 * hour;

QString translated(const char* source)
{
    return InterfaceTexts::shared().text("TransferRate", source);
}

std::chrono::milliseconds steadyTime()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

TransferRate::Clock& usualClock()
{
    static TransferRate::Clock clock = steadyTime;
    return clock;
}

double inSeconds(std::chrono::milliseconds time)
{
    return std::chrono::duration<double>(time).count();
}

qint64 roundedUp(qint64 seconds, qint64 unit)
{
    return (seconds + unit - 1) / unit;
}

} // namespace

TransferRate::TransferRate(Clock clock)
    : m_clock(clock ? std::move(clock) : [] { return usualClock()(); })
{
    begin();
}

void TransferRate::setUsualClock(Clock clock)
{
    usualClock() = clock ? std::move(clock) : steadyTime;
}

void TransferRate::begin()
{
    m_begin = m_last = m_shown = m_clock();
    m_bytes = 0;
    m_weighted = 0;
    m_weight = 0;
    m_shownRate.reset();
    m_shownLeft = 0;
}

void TransferRate::note(qint64 bytes, qint64 total)
{
    const auto now = m_clock();
    if (now - m_last >= shortestSample)
        learn(now, bytes);
    if (now - m_shown < betweenTexts)
        return;
    m_shown = now;
    m_shownRate = std::max(m_weighted / m_weight, 0.0);
    m_shownLeft = total > 0 ? std::max<qint64>(total - bytes, 0) : 0;
}

// What happened longer ago counts less. The division by the weight that has come together makes the first numbers those
// of the time that has been seen, not of one that began with nothing.
void TransferRate::learn(std::chrono::milliseconds now, qint64 bytes)
{
    const double seconds = inSeconds(now - m_last);
    const double kept = std::exp(-seconds / memoryInSeconds);
    m_weighted = m_weighted * kept + static_cast<double>(bytes - m_bytes) / seconds * (1 - kept);
    m_weight = m_weight * kept + (1 - kept);
    m_last = now;
    m_bytes = bytes;
}

QString TransferRate::rateText() const
{
    if (!m_shownRate)
        return {};
    const qint64 kilobytes = std::llround(*m_shownRate / kilobyte);
    if (kilobytes < kilobytesInMegabyte)
        return translated(QT_TRANSLATE_NOOP("TransferRate", "%1 KB/s")).arg(kilobytes);
    return translated(QT_TRANSLATE_NOOP("TransferRate", "%1 MB/s"))
        .arg(format(QStringLiteral("%0.1f"), *m_shownRate / megabyte));
}

std::optional<qint64> TransferRate::secondsLeft() const
{
    if (!m_shownRate || m_shownLeft <= 0)
        return {};
    const double seconds = std::ceil(static_cast<double>(m_shownLeft) / *m_shownRate - roundingError);
    if (seconds > static_cast<double>(day))
        return {};
    return std::max<qint64>(std::llround(seconds), 1);
}

QString TransferRate::timeLeftText() const
{
    const auto seconds = secondsLeft();
    if (!seconds)
        return {};
    if (*seconds > hour)
        return translated(QT_TRANSLATE_NOOP("TransferRate", "about %1 h left")).arg(roundedUp(*seconds, hour));
    if (*seconds > minute)
        return translated(QT_TRANSLATE_NOOP("TransferRate", "about %1 min left")).arg(roundedUp(*seconds, minute));
    return translated(watched() < untilSure ? QT_TRANSLATE_NOOP("TransferRate", "about %1 s left")
                                            : QT_TRANSLATE_NOOP("TransferRate", "%1 s left"))
        .arg(*seconds);
}

QString TransferRate::text() const
{
    const QString rate = rateText();
    const QString left = timeLeftText();
    return left.isEmpty() ? rate : rate + QStringLiteral(" · ") + left;
}

} // namespace tljira
