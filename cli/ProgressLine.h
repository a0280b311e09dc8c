#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace cli {

/// How far a transfer is.
struct Progress
{
    qint64 bytes = 0;
    qint64 total = 0;
    std::optional<double> bytesPerSecond;
    std::optional<std::chrono::seconds> timeLeft;
};

/// One line of exactly `columns` characters: share, bar, bytes, rate and time left. Where room is short the bar goes
/// first.
QString progressLine(const Progress& progress, int columns);

} // namespace cli
