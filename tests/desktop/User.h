#pragma once

#include "platform/toolkit/windows/Window.h"
#include "tests/states/InSight.h"

#include <QAbstractNativeEventFilter>
#include <QLineEdit>
#include <QObject>
#include <QString>
#include <QWidget>

#include <functional>

namespace tests {

/// Somebody in front of the screen. Whatever is done here goes through the X server and the window manager, and has
/// arrived when it returns; what does not arrive fails the test.
class User : public QObject, public QAbstractNativeEventFilter
{
public:
    User();
    ~User() override;

    /// In the middle of the view, which must be in sight and enabled.
    void click(QWidget* view);
    /// Clicks the field and replaces what stands in it.
    void type(QLineEdit* field, const QString& text);
    /// Goes to whatever has the keyboard.
    void write(const QString& text);
    /// A key by its name in the X world.
    void press(const char* key);
    /// Lets go when the server has repeated the key that often.
    void hold(const char* key, int repeats);
    /// The same, counted from the moment at which the condition holds.
    void holdUntil(const char* key, int repeats, const std::function<bool()>& condition);
    /// The close button of the title bar.
    void clickClose(const QWidget* window);

    /// What the whole screen shows, as a file of that name in the folder for screenshots.
    static void picture(const QString& name);

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    void release(const char* key);

    int m_keyPresses = 0;
    int m_keyReleases = 0;
    int m_buttonReleases = 0;
};

/// The window with its title bar, in pixels from the upper left corner of the screen. (QWidget keeps what it has
/// measured while the window manager was making the frame.)
QRect frameOf(const QWidget* window);

/// Whether the window is on screen, in front of all others, and has the keyboard.
bool isInFront(const QWidget* window);

} // namespace tests
