#pragma once

#include "cli/TransferRate.h"

#include <QElapsedTimer>
#include <QTimer>

namespace cli {

/// Shows on the terminal at standard error how far a transfer is, on one line that it draws anew a few times a second.
class ProgressBar
{
public:
    /// One that is not `isVisible` does nothing.
    explicit ProgressBar(bool isVisible);
    ~ProgressBar();

    void update(qint64 bytes, qint64 total);
    /// Leaves the line as it is at the end of a transfer that worked; the bar of another one vanishes.
    void finish();

private:
    void draw();
    TransferRate::Time now() const { return TransferRate::Time(m_clock.elapsed()); }

    const bool m_isVisible;
    bool m_isDrawn = false;
    qint64 m_bytes = 0;
    qint64 m_total = 0;
    TransferRate m_rate;
    QElapsedTimer m_clock;
    QTimer m_timer;
};

} // namespace cli
