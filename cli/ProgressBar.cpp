#include "cli/ProgressBar.h"

#include "cli/ProgressLine.h"
#include "platform/console/StandardStreams.h"

namespace cli {

using tljira::console::terminalColumns;
using tljira::console::writeError;

ProgressBar::ProgressBar(bool isVisible)
    : m_isVisible(isVisible)
{
    m_clock.start();
    m_rate.addSample(0, now());
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { draw(); });
}

ProgressBar::~ProgressBar()
{
    if (m_isDrawn)
        writeError('\r' + QByteArray(terminalColumns() - 1, ' ') + '\r');
}

void ProgressBar::update(qint64 bytes, qint64 total)
{
    m_bytes = bytes;
    m_total = total;
    m_rate.addSample(bytes, now());
    if (m_isVisible && !m_timer.isActive()) {
        m_timer.start(std::chrono::milliseconds(100));
        draw();
    }
}

void ProgressBar::finish()
{
    m_timer.stop();
    if (!m_isDrawn)
        return;
    draw();
    writeError("\n");
    m_isDrawn = false;
}

void ProgressBar::draw()
{
    const Progress progress = {m_bytes, m_total, m_rate.bytesPerSecond(now()), m_rate.timeLeft(m_total, now())};
    // A character in the last column would make some terminals begin another line.
    writeError('\r' + progressLine(progress, terminalColumns() - 1).toUtf8());
    m_isDrawn = true;
}

} // namespace cli
