#pragma once

#include <QElapsedTimer>
#include <QKeyEvent>

#include <vector>

namespace tljira {

/// The keys that the window system reports as down, and which of them were pressed for something that is no longer on
/// screen: such a key means nothing until it is pressed again. Neither does Return, Enter or Space pressed a second
/// time within the interval of a double click: that was meant for what the first press has ended.
///
/// X servers send a key that is held up and down again and again, with one time for both. Qt marks such a pair as
/// repeated only if both have arrived when it reads the first, so that on a busy machine some pass for pressed anew:
/// their time tells.
class PressedKeys
{
public:
    /// Each event of a key once, in the order of the window system. Answers whether it means nothing.
    bool note(const QKeyEvent& event);

    /// Whether the event, which has been noted, comes of a key that is held.
    bool isRepeat(const QKeyEvent& event) const;

    /// Whatever is down was pressed for what is on screen no more.
    void screenChanged();

private:
    struct Press
    {
        int key = 0;
        QElapsedTimer since;
        quint64 releaseTime = 0; ///< of the window system; 0 as long as none has come
        bool isDown = true;
        bool isRepeated = false;  ///< down since an earlier press, whatever the event says
        bool isAnnounced = false; ///< its ShortcutOverride has come, its KeyPress has not
        bool isStale = false;
        bool wasStale = false; ///< when it was last released
        bool wasBeforeChange = false;
    };

    const Press* find(int key) const;
    Press* find(int key);
    Press& press(const QKeyEvent& event);
    static bool release(Press& press, const QKeyEvent& event);

    std::vector<Press> m_presses; ///< one for each key, the last
};

} // namespace tljira
