#pragma once

#include <QRect>
#include <QVariantAnimation>

#include <functional>
#include <optional>

class QWidget;

namespace tljira {

/// Moves the edges of a top-level widget to where its owner already says they are.
class FrameAnimation
{
public:
    /// `onArrival` is called when an animation, not a setting at once, has reached its target.
    FrameAnimation(QWidget* widget, std::function<void()> onArrival);

    /// Takes over from a running animation. What has no visible way to go is set at once.
    void moveTo(const QRect& target, bool smoothly);

    /// The rectangle under way; nullopt when the widget is where it should be.
    std::optional<QRect> target() const { return m_target; }

private:
    void arrive();

    QWidget* m_widget;
    std::function<void()> m_onArrival;
    std::optional<QRect> m_target;
    QVariantAnimation m_animation;
};

} // namespace tljira
