#pragma once

#include "tests/desktop/DesktopHands.h"

#include <QObject>

namespace tests {

/// The keyboard of the screen, for a program that screen readers listen to: Qt asks them about each key before a window
/// gets it, so that keys arrive later than the window system says.
class ReaderHands : public QObject, public DesktopHands
{
public:
    explicit ReaderHands(User& user);

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) override;
    void write(const QString& text) override;

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    /// Whoever comes before may keep a key.
    void goFirst();
    void waitForReleasesAfter(int before) const;

    int m_releases = 0;
};

} // namespace tests
