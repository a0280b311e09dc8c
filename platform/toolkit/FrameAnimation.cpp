#include "platform/toolkit/FrameAnimation.h"

#include <QStyle>
#include <QWidget>

namespace platform {

FrameAnimation::FrameAnimation(QWidget* widget)
    : m_widget(widget)
{
    m_animation.setEasingCurve(QEasingCurve::InOutQuad);
    QObject::connect(&m_animation, &QVariantAnimation::valueChanged, widget,
                     [widget](const QVariant& value) { widget->setGeometry(value.toRect()); });
}

void FrameAnimation::moveTo(const QRect& target, bool smoothly)
{
    m_animation.stop();
    const int duration = m_widget->style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, m_widget);
    if (!smoothly || duration <= 0 || !m_widget->isVisible() || m_widget->geometry() == target) {
        m_widget->setGeometry(target);
        return;
    }
    m_animation.setDuration(duration);
    m_animation.setStartValue(m_widget->geometry());
    m_animation.setEndValue(target);
    m_animation.start();
}

std::optional<QRect> FrameAnimation::target() const
{
    if (m_animation.state() != QAbstractAnimation::Running)
        return std::nullopt;
    return m_animation.endValue().toRect();
}

} // namespace platform
