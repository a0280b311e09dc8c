#pragma once

#include "tests/states/Hands.h"

#include <QObject>

#include <functional>

class QWidget;

namespace tests {

/// Somebody in front of the compositor's screen.
class WaylandHands : public QObject, public Hands
{
public:
    WaylandHands() = default;

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) override;
    void write(const QString& text) override;
    /// Lets go when the key has been repeated that often since the condition holds.
    void holdUntil(Qt::Key key, int repeats, const std::function<bool()>& condition);
    /// In the middle of the view, which must be in sight.
    void click(QWidget* view);

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    void watch();
    void strike(unsigned key, Qt::KeyboardModifiers modifiers);

    int m_presses = 0; ///< repeated ones, too
    int m_releases = 0;
    int m_clicks = 0;
};

} // namespace tests
