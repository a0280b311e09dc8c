#include "cli/TransferRate.h"

#include <cmath>

namespace cli {

namespace {

constexpr auto window = std::chrono::seconds(5);
constexpr auto shortest = std::chrono::milliseconds(250);
constexpr double longestTimeLeft = 100 * 3600.0;

} // namespace

void TransferRate::addSample(qint64 bytes, Time time)
{
    m_samples.push_back({bytes, time});
    // The newest of those that are as old as the window stays, as its beginning.
    while (m_samples.size() > 2 && m_samples[1].time <= time - window)
        m_samples.pop_front();
}

std::optional<double> TransferRate::bytesPerSecond(Time now) const
{
    if (m_samples.empty() || now - m_samples.front().time < shortest)
        return std::nullopt;
    const std::chrono::duration<double> elapsed = now - m_samples.front().time;
    return static_cast<double>(m_samples.back().bytes - m_samples.front().bytes) / elapsed.count();
}

std::optional<std::chrono::seconds> TransferRate::timeLeft(qint64 total, Time now) const
{
    const auto rate = bytesPerSecond(now);
    if (!rate || *rate <= 0 || total < m_samples.back().bytes)
        return std::nullopt;
    const double seconds = std::ceil(static_cast<double>(total - m_samples.back().bytes) / *rate);
    if (seconds >= longestTimeLeft)
        return std::nullopt;
    return std::chrono::seconds(static_cast<qint64>(seconds));
}

} // namespace cli
