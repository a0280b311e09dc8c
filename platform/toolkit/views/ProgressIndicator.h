#pragma once

#include "platform/foundation/Export.h"

#include <QBasicTimer>
#include <QSize>
#include <QWidget>

namespace tljira {

/// The spinning indicator of work whose length is not known; a bar with a known end is a QProgressBar. Turns only while
/// it is animating and visible. In Designer: a QWidget promoted to tljira::ProgressIndicator.
class TL_EXPORT ProgressIndicator : public QWidget
{
    Q_OBJECT

public:
    /// At rest: nothing is drawn.
    explicit ProgressIndicator(QWidget* parent = nullptr);

    ///@{
    /// Starts and stops turning. Starting twice is stopped by one stop.
    void startAnimation();
    void stopAnimation();
    ///@}
    /// Between start and stop, also while the view is hidden.
    bool isAnimating() const { return m_isAnimating; }

    ///@{
    /// Qt's own.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    ///@}

protected:
    ///@{
    /// Qt's own.
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    ///@}

private:
    void updateTimer();

    QBasicTimer m_timer;
    int m_step = 0;
    bool m_isAnimating = false;
};

} // namespace tljira
