#include "platform/toolkit/windows/FrameAnimation.h"

#include <QStyle>
#include <QWidget>

namespace tljira {

FrameAnimation::FrameAnimation(QWidget* widget, std::function<void()> onArrival)
    : m_widget(widget)
    , m_onArrival(std::move(onArrival))
{
    m_animation.setEasingCurve(QEasingCurve::InOutQuad);
    QObject::connect(&m_animation, &QVariantAnimation::valueChanged, [this](const QVariant& value) {
        if (m_animation.state() == QAbstractAnimation::Running)
            m_widget->setGeometry(value.toRect());
    });
    QObject::connect(&m_animation, &QVariantAnimation::finished, [this] { arrive(); });
}

void FrameAnimation::moveTo(const QRect& target, bool smoothly)
{
    m_animation.stop();
    m_target.reset();
    const int duration = m_widget->style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, m_widget);
    if (!smoothly || duration <= 0 || !m_widget->isVisible() || m_widget->geometry() == target) {
        m_widget->setGeometry(target);
        return;
    }
    m_target = target;
    m_animation.setDuration(duration);
    m_animation.setStartValue(m_widget->geometry());
    m_animation.setEndValue(target);
    m_animation.start();
}

void FrameAnimation::arrive()
{
    m_widget->setGeometry(*m_target);
    m_target.reset();
    m_onArrival();
}

} // namespace tljira
