#pragma once

#include "platform/foundation/Export.h"
#include "platform/toolkit/windows/ModalResponse.h"

#include <QRectF>
#include <QString>

#include <functional>
#include <memory>

class QWidget;

namespace tljira {

class WindowDelegate;

/// A top-level window around one content view, which fills it. Main thread only.
///
/// Frames include the decorations and are in the platform's coordinates: the origin is the bottom left corner of the
/// primary screen, y grows upwards, points not pixels. Null windows are quiet no-ops wherever a window is asked for.
///
/// Keys: Return clicks the window's default button (QPushButton::default) unless its user, or the program, has put the
/// focus on another button; Escape clicks the visible button whose shortcut is Esc. Both are set in Designer. A key
/// that repeats because it is held presses nothing, and neither does one that was pressed before a sheet came or went;
/// Return, Enter and Space pressed twice within the interval of a double click count once where a sheet came or went in
/// between.
///
/// The focus is always on a control that is visible, enabled and not covered by a sheet, if there is one. When the
/// control that has it is hidden, disabled, covered or deleted, it goes, in a later turn of the event loop, to the
/// control of the window or its sheet that had it last, else to the first text field, the default button, the first
/// control.
class TL_EXPORT Window : public std::enable_shared_from_this<Window>
{
public:
    /// A hidden window of the content's size. The content is not owned: it may be moved elsewhere, or go first, and is
    /// put off screen when the window goes.
    static std::shared_ptr<Window> create(const QString& title = QString(), QWidget* contentView = nullptr);
    ~Window();

    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// The window that this view stands in, or null.
    static std::shared_ptr<Window> windowOf(const QWidget* view);

    /// Null once the content has been moved elsewhere; such a window is not shown as a child window.
    QWidget* contentView() const;
    /// Takes the view out of where it stands and gives it the window's size. The content before it goes off screen.
    void setContentView(QWidget* view);

    ///@{
    /// What the title bar and the window list of the system show.
    QString title() const;
    void setTitle(const QString& title);
    ///@}

    ///@{
    /// Kept weakly; null for none.
    void setDelegate(const std::shared_ptr<WindowDelegate>& delegate);
    std::shared_ptr<WindowDelegate> delegate() const;
    ///@}

    /// Until the window system has put the window on screen its decorations are not known, and the frame is the
    /// content's.
    QRectF frame() const;

    /// frame() and the content's size are the new ones when this returns. A frame whose title bar would lie above the
    /// screen comes down until it does not; a window that fills the screen is restored first. With `animate`, and if
    /// the window is on screen, its edges follow smoothly; a later setFrame() takes over from where they are. `display`
    /// draws the content at once.
    void setFrame(const QRectF& frame, bool display, bool animate = false);

    /// In the middle of its screen.
    void center();

    /// On screen, also when other windows cover it.
    bool isVisible() const;
    /// Whether it has the keyboard.
    bool isKeyWindow() const;

    /// Shows the window in front and gives it the keyboard, also one that is minimized. The first time it is centred
    /// unless setFrame() placed it. A window that was hidden becomes a dialog of the host's window that is active then,
    /// for as long as that is on screen. Of a sheet the window comes that it is drawn in.
    void makeKeyAndOrderFront();
    /// Takes the window off screen without closing it: there is no windowWillClose, and a modal run goes on.
    void orderOut();

    /// windowWillClose, then off screen. Sheets of the window end with ModalResponse::Stop first; a window that is
    /// itself a sheet ends with Stop. Closing a closed window does nothing.
    void close();

    // Sheets. A sheet is drawn inside its window, in the middle below the title bar, and keeps mouse, keys and screen
    // readers from the rest of the window, and from nothing else. (On macOS the system draws it.) setFrame() of a sheet
    // changes its size; its upper edge stays. A window that is too small for its sheet grows downwards meanwhile, which
    // its frame() and its content do not show, and shrinks back unless its user has resized it.
    //
    // A sheet has no close button. When the user closes its window, or quits, it does what it does on Escape; if it is
    // still there then, it ends with ModalResponse::Cancel. Then the window closes.

    /// Gets the code of endSheet(), inside endSheet(), once. It is dropped unrun only if the parent is destroyed.
    using SheetCompletion = std::function<void(int returnCode)>;

    /// Returns at once. While another sheet is up this one waits for its turn. A window that is a sheet already, here
    /// or elsewhere, waiting or not, is not begun again (logged). The parent keeps the sheet alive until it
    /// ends.
    void beginSheet(const std::shared_ptr<Window>& sheet, SheetCompletion completion);

    /// Ends the sheet, shown or waiting; the next one shows after the completion. Nothing happens if it is no sheet of
    /// this window.
    void endSheet(const std::shared_ptr<Window>& sheet, int returnCode = ModalResponse::Stop);

    /// The window this one is a sheet of, from beginSheet() to endSheet(); null otherwise.
    std::shared_ptr<Window> sheetParent() const;
    /// The sheet that is up.
    std::shared_ptr<Window> attachedSheet() const;

    // Child windows move, show and hide with their parent.

    /// Where a child window stands relative to its parent.
    enum class Ordered { Below = -1, Above = 1 };

    /// The parent keeps the child alive; a child of another window changes over.
    void addChildWindow(const std::shared_ptr<Window>& child, Ordered ordered);
    /// The child stays where it is, shown or not. Does nothing for a window that is no child of this one.
    void removeChildWindow(const std::shared_ptr<Window>& child);
    /// The window this one is a child of, or null.
    std::shared_ptr<Window> parentWindow() const;

    /// The top-level widget, for what Qt says well enough (icon, screenshots, resizing).
    QWidget* widget() const;

private:
    Window();

    struct Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace tljira
