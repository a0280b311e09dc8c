#include "cli/TransferRate.h"

#include <algorithm>
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
    while (m_samples.size() > 1 && m_samples[1].time <= time - window)
        m_samples.pop_front();
}

std::optional<double> TransferRate::bytesPerSecond(Time now) const
{
    if (m_samples.empty() || now - m_samples.front().time < shortest)
        return std::nullopt;
    const Sample& first = start(now);
    const std::chrono::duration<double> elapsed = now - first.time;
    return static_cast<double>(m_samples.back().bytes - first.bytes) / elapsed.count();
}

const TransferRate::Sample& TransferRate::start(Time now) const
{
    const auto later = std::find_if(m_samples.begin() + 1, m_samples.end(),
                                    [now](const Sample& sample) { return sample.time > now - window; });
    return *(later - 1);
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
