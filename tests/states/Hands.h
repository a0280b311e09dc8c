#pragma once

#include <QString>

namespace tests {

/// A keyboard in front of the window that is active. What is pressed has arrived when a call returns.
class Hands
{
public:
    Hands() = default;
    virtual ~Hands() = default;
    Hands(const Hands&) = delete;
    Hands& operator=(const Hands&) = delete;

    /// Presses the key and lets it go.
    virtual void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) = 0;
    /// Latin letters, digits and what stands beside them.
    virtual void write(const QString& text) = 0;
};

} // namespace tests
