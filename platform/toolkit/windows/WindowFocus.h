#pragma once

#include <QPointer>
#include <QWidget>

namespace tljira {

class WindowWidget;
struct WindowParts;

/// Which control of a window has the keyboard, and which one gets it when that cannot have it any more: because it was
/// hidden or disabled, because a sheet covers it, or because it has gone.
class WindowFocus
{
public:
    explicit WindowFocus(WindowParts& parts);

    /// The window or sheet that the view stands in; null for one that stands in none of ours.
    static WindowWidget* windowAround(const QWidget* view);
    /// The sheet that is uppermost in that top-level window, or the window itself.
    static WindowWidget* uppermost(WindowWidget& window);
    /// Whether a sheet lies over the view.
    static bool isCovered(const QWidget* view);
    /// Whether keys may do something in the view: it is visible, enabled, and not covered.
    static bool isWithinReach(const QWidget* view);

    /// Puts the keyboard where it can be used, unless it is there: in the uppermost sheet of this window's top-level
    /// window. There a control that had it before is preferred; then text fields, the default button, all others.
    void check();
    /// The same in a later turn of the event loop, or before the next key, so that the program can first hide one view
    /// and then show another.
    void checkLater();

    /// The keyboard has come to a control of this window, or would have come if it were within reach.
    void remember(QWidget* control);
    /// Remembers the control that has the keyboard in the top-level window, if it is one of this window's.
    void rememberCurrent();
    void forget();

    /// The control of this window that has the keyboard, or null.
    QWidget* control() const;
    /// Whether nobody but check() has put the keyboard there.
    bool isPlaced(const QWidget* control) const { return control == m_placed; }

private:
    QWidget* best() const;
    void place(QWidget* control);

    WindowParts& m_parts;
    QPointer<QWidget> m_last;
    QPointer<QWidget> m_lastField;
    QPointer<QWidget> m_placed;
    bool m_isCheckUnderWay = false;
};

} // namespace tljira
