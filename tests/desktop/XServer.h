#pragma once

#include <QPoint>
#include <QSize>
#include <QWindow>

#include <array>

namespace tests {

/// The X server that the environment names, as the devices in front of it and a window list see it. What is sent here
/// takes the way of real keys and a real pointer: through the server and the window manager.
class XServer
{
public:
    /// Connects at the first call.
    static XServer& instance();

    /// Whether a window manager has taken the screen over, and answers. To be asked until it has.
    bool hasWindowManager();

    /// A key by its name in the X world, such as "Return" or "a".
    void keyDown(const char* name);
    void keyUp(const char* name);
    /// Whether the server repeats a key for as long as it is down. It does not at first: a slow program may leave a key
    /// down for longer than a user would.
    void setRepeating(bool isRepeating);
    /// Presses and releases the keys that write this character on an American keyboard.
    void type(QChar character);

    /// Both in pixels from the upper left corner of the screen.
    void movePointer(const QPoint& position);
    void pressButton();

    ///@{
    /// What a window list of the desktop asks for.
    void minimise(WId window);
    void activate(WId window);
    void setMaximised(WId window, bool isMaximised);
    /// The upper left corner of the frame, and the size of the content.
    void place(WId window, const QPoint& corner, const QSize& size);
    ///@}
    /// Whether the window lets the window manager offer to maximise it. (Some offer it all the same.)
    bool mayBeMaximised(WId window) const;
    /// The top-level window that is in front of all others.
    WId frontWindow() const;

    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

private:
    XServer();

    void ask(WId window, const char* message, const std::array<long, 5>& values);

    /// Xlib's own names are macros that other headers cannot be read with.
    void* m_display;
    WId m_question = 0; ///< a window that never shows, by which the window manager is asked for its answer
};

} // namespace tests
