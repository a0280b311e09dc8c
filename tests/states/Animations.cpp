#include "tests/states/Animations.h"

#include "tests/kit/WaitUntil.h"

#include <QApplication>
#include <QStyle>
#include <QVariantAnimation>

#include <gtest/gtest.h>

namespace tests {

// All animations of a program have one clock, so that one of the same length that begins later also ends later.
void waitForAnimations()
{
    const int duration = QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration);
    if (duration > 0) {
        QVariantAnimation animation;
        animation.setDuration(duration);
        animation.setStartValue(0);
        animation.setEndValue(1);
        animation.start();
        EXPECT_TRUE(waitUntil([&] { return animation.state() == QAbstractAnimation::Stopped; }));
    }
    drainMainQueue();
}

} // namespace tests
