#include "platform/toolkit/views/ProgressIndicator.h"

#include "platform/toolkit/views/Accessible.h"

#include <QPainter>
#include <QTimerEvent>

namespace tljira {

namespace {

constexpr int spokes = 12;
constexpr int millisecondsPerStep = 80;
constexpr QSize smallest(16, 16);
constexpr QSize usual(20, 20);

class IndicatorAccessible : public QAccessibleWidget
{
public:
    explicit IndicatorAccessible(ProgressIndicator* indicator)
        : QAccessibleWidget(indicator, QAccessible::Animation)
    {
    }
};

} // namespace

ProgressIndicator::ProgressIndicator(QWidget* parent)
    : QWidget(parent)
{
    installAccessible<ProgressIndicator, IndicatorAccessible>();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ProgressIndicator::startAnimation()
{
    m_isAnimating = true;
    updateTimer();
    update();
}

void ProgressIndicator::stopAnimation()
{
    m_isAnimating = false;
    updateTimer();
    update();
}

QSize ProgressIndicator::sizeHint() const
{
    return usual;
}

QSize ProgressIndicator::minimumSizeHint() const
{
    return smallest;
}

void ProgressIndicator::updateTimer()
{
    const bool turns = m_isAnimating && isVisible();
    if (turns && !m_timer.isActive())
        m_timer.start(millisecondsPerStep, this);
    else if (!turns)
        m_timer.stop();
}

void ProgressIndicator::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    updateTimer();
}

void ProgressIndicator::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    updateTimer();
}

void ProgressIndicator::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId())
        return QWidget::timerEvent(event);
    m_step = (m_step + 1) % spokes;
    update();
}

// A wheel of spokes, the brightest of which walks round and leaves a fading trail. At rest nothing is drawn.
void ProgressIndicator::paintEvent(QPaintEvent*)
{
    if (!m_isAnimating)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = std::min(width(), height()) / 2.0;
    const double thickness = radius / 5;
    painter.translate(rect().toRectF().center());
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const int age = (m_step - spoke + spokes) % spokes;
        QColor color = palette().color(QPalette::WindowText);
        color.setAlphaF(std::max(1.0F - static_cast<float>(age) / spokes, 0.15F));
        painter.setPen(QPen(color, thickness, Qt::SolidLine, Qt::RoundCap));
        painter.save();
        painter.rotate(360.0 * spoke / spokes);
        painter.drawLine(QPointF(0, -radius * 0.5), QPointF(0, -radius + thickness));
        painter.restore();
    }
}

} // namespace tljira
