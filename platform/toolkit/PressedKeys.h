#pragma once

#include <QElapsedTimer>
#include <QKeyEvent>

#include <vector>

namespace tljira {

/// The keys that the window system reports as down, and which of them were pressed for something that is no longer on
/// screen: such a key means nothing until it is pressed again. Neither does Return, Enter or Space pressed a second
/// time within the interval of a double click: that was meant for what the first press has ended.
class PressedKeys
{
public:
    /// Each event of a key once, in the order of the window system. Answers whether it means nothing.
    bool note(const QKeyEvent& event);

    /// Whatever is down was pressed for what is on screen no more.
    void screenChanged();

private:
    struct Press
    {
        int key = 0;
        QElapsedTimer since;
        bool isDown = true;
        bool isAnnounced = false; ///< its ShortcutOverride has come, its KeyPress has not
        bool isStale = false;
        bool wasBeforeChange = false;
    };

    Press& press(const QKeyEvent& event);

    std::vector<Press> m_presses; ///< one for each key, the last
};

} // namespace tljira
