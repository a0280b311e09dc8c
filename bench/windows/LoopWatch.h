#pragma once

#include <QObject>

#include <chrono>

namespace bench {

/// Watches, while it lives, how long the main thread stays away from its event loop at a stretch.
class LoopWatch : public QObject
{
public:
    LoopWatch();

    double longestSeconds() const { return m_longest.count(); }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_left = Clock::now();
    std::chrono::duration<double> m_longest{};
};

} // namespace bench
