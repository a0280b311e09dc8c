#pragma once

#include <QJsonObject>
#include <QRect>
#include <QString>

namespace tests {

/// A window as the compositor sees it.
struct SwayWindow
{
    qint64 id = 0;
    bool isFloating = false; ///< what sway does with dialogs
    bool isFocused = false;
    QRect frame;   ///< with the title bar, in the coordinates of the screen
    QRect content; ///< in those of the screen, too
};

/// What the compositor shows under that title; the id is 0 where there is nothing.
SwayWindow swayWindow(const QString& title);

/// What a user of sway binds keys to, such as "kill", for one window. Answers whether sway did it.
bool tellSway(const SwayWindow& window, const QString& command);

} // namespace tests
