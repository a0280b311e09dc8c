#pragma once

#include <QtGlobal>

#include <chrono>
#include <deque>
#include <optional>

namespace cli {

/// How fast a transfer goes, over its last seconds, and when it will end. Times are counted from any fixed moment and
/// never run backwards.
class TransferRate
{
public:
    using Time = std::chrono::milliseconds;

    /// `bytes` so far at this time.
    void addSample(qint64 bytes, Time time);

    /// Nothing until enough time has passed to tell. Sinks while nothing moves.
    std::optional<double> bytesPerSecond(Time now) const;

    /// Rounded up to whole seconds. Nothing when there is no telling, or when it would take days.
    std::optional<std::chrono::seconds> timeLeft(qint64 total, Time now) const;

private:
    struct Sample
    {
        qint64 bytes = 0;
        Time time = {};
    };

    /// The newest sample that is as old as the window; before there is one, the first.
    const Sample& start(Time now) const;

    std::deque<Sample> m_samples;
};

} // namespace cli
