#pragma once

#include "tests/states/Hands.h"

namespace tests {

/// Keys that come from the window system of Qt's offscreen platform: they take the way of real ones from there on, so
/// that shortcuts, the focus and whatever watches the keys have their say.
class WindowHands : public Hands
{
public:
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) override;
    void write(const QString& text) override;
};

} // namespace tests
