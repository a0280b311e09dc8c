#pragma once

#include <QString>
#include <QtGlobal>

#include <chrono>
#include <functional>
#include <optional>

namespace tljira {

/// How fast a transfer goes and when it will be through, in words that a user can read: they change once a second at
/// most, and the rate is an average that forgets within a few seconds. In the user's language.
///
/// Main thread only. It hears of nothing but note(): whoever wants to show that nothing comes any more calls that from
/// time to time with the bytes that there are.
class TransferRate
{
public:
    /// The time since whenever; never goes back.
    using Clock = std::function<std::chrono::milliseconds()>;

    /// Without a clock of its own: the usual one.
    explicit TransferRate(Clock clock = {});

    /// The clock of all that have none of their own, from now on. At first it is the system's steady one, which an
    /// empty one brings back.
    static void setUsualClock(Clock clock);

    /// A transfer begins at this moment. What was known of another is forgotten.
    void begin();

    /// So many bytes of `total` have gone by. A total of 0 or less is one that nobody knows.
    void note(qint64 bytes, qint64 total);

    /// "2.1 MB/s", a megabyte being 1024 × 1024 bytes as everywhere here; empty in the first second, which tells
    /// little.
    QString rateText() const;

    /// "about 7 s left", "7 s left" once the rate has been watched for a while; empty while there is no rate, when
    /// nothing is left or known to be left, and when it would take more than a day.
    QString timeLeftText() const;

    /// Both: "2.1 MB/s · 7 s left". Empty while neither is known.
    QString text() const;

private:
    std::chrono::milliseconds watched() const { return m_last - m_begin; }
    void learn(std::chrono::milliseconds now, qint64 bytes);
    std::optional<qint64> secondsLeft() const;

    Clock m_clock;
    std::chrono::milliseconds m_begin{};
    std::chrono::milliseconds m_last{};  ///< when the rate last learned something
    std::chrono::milliseconds m_shown{}; ///< when the shown numbers were last renewed
    qint64 m_bytes = 0;                  ///< at m_last
    double m_weighted = 0;               ///< bytes a second, times m_weight
    double m_weight = 0;                 ///< from 0 to 1: how much of the average has been seen
    std::optional<double> m_shownRate;
    qint64 m_shownLeft = 0; ///< bytes; 0 if unknown
};

} // namespace tljira
