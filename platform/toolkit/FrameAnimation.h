#pragma once

#include <QRect>
#include <QVariantAnimation>

#include <optional>

class QWidget;

namespace platform {

/// Moves the edges of a top-level widget to where its owner already says they are.
class FrameAnimation
{
public:
    explicit FrameAnimation(QWidget* widget);

    /// Takes over from a running animation. What has no visible way to go is set at once.
    void moveTo(const QRect& target, bool smoothly);

    /// The rectangle under way; nullopt when the widget is where it should be.
    std::optional<QRect> target() const;

private:
    QWidget* m_widget;
    QVariantAnimation m_animation;
};

} // namespace platform
