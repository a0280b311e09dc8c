#pragma once

#include <QMetaObject>
#include <QPointer>
#include <QWidget>

namespace tljira {

/// Makes a window of ours a dialog of the host's window: above it, minimized with it, and placed over it where the
/// window system places windows.
class HostWindow
{
public:
    explicit HostWindow(QWidget* window)
        : m_window(window)
    {
    }

    /// Whose dialog the window becomes from the next adopt() on, whatever window is active then: that of `part`, while
    /// it is on screen. That is a view, a window of any kind, or an object below one of them. Null for the active one.
    void setPart(QObject* part) { m_part = part; }

    /// To be called before the window is shown: it belongs to the window that is active at this moment, or to the one
    /// that the active window itself belongs to. That lasts until the host's window goes off screen. Then this one
    /// stands alone and keeps the application from quitting with the last window.
    void adopt();

private:
    QPointer<QWidget> m_window;
    QPointer<QObject> m_part;
    QMetaObject::Connection m_departure;
};

/// The window that a dialog opened by our code at this moment belongs to: the active one, even if its application is
/// not in front. Null if there is none.
QWidget* dialogParent();

/// That a window of ours has got the keyboard.
void noteKeyWindow(QWidget* window);

} // namespace tljira
