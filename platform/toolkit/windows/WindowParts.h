#pragma once

#include "platform/toolkit/windows/ChildWindows.h"
#include "platform/toolkit/windows/FrameAnimation.h"
#include "platform/toolkit/windows/HostWindow.h"
#include "platform/toolkit/windows/SheetCover.h"
#include "platform/toolkit/windows/SheetEdge.h"
#include "platform/toolkit/windows/SheetQueue.h"
#include "platform/toolkit/windows/SheetRoom.h"
#include "platform/toolkit/windows/Window.h"
#include "platform/toolkit/windows/WindowFocus.h"
#include "platform/toolkit/windows/WindowWidget.h"

#include <QMargins>
#include <QPoint>
#include <QPointer>
#include <QRect>

#include <memory>

namespace tljira {

/// The inside of a window, which its widget, its sheets and its child windows work with. Rectangles are Qt's, of the
/// content, and on the screen.
///
/// A sheet that is up stands inside its parent: its widget is a child of the parent's, above the content and a cover.
struct WindowParts
{
    explicit WindowParts(Window& owner);
    ~WindowParts();

    static WindowParts& of(const Window& some);

    // What the widget reports.
    bool userWantsToClose();
    void geometryChanged();
    void contentWantsLayout();
    void fontChanged();
    void contentLeft(const QObject* view);
    void visibilityChanged(bool visible);
    void keyChanged();

    QRect contentRect() const;
    void placeContentRect(const QRect& rect, bool smoothly);
    void moveBy(const QPoint& distance);
    void parentMoved(const QPoint& distance);
    QMargins decorations() const;
    /// Leaves the state in which the window fills the screen, if it is in it.
    void restore();
    /// Where the window, with its decorations, may be for its title bar to be within reach.
    QRect withTitleBarOnScreen(const QRect& rect) const;
    void layOutContent(const QSize& size);
    void limitUserToContent();
    void takeAlong();

    void becomeSheetOf(const std::shared_ptr<Window>& parent);
    void leaveSheet();
    void showAsSheet();

    /// The parts of the window that this one is drawn in, or null.
    WindowParts* drawnIn() const;
    /// The widget of the sheet that is drawn in this window at this moment, or null.
    WindowWidget* sheetInside() const;
    /// Puts the content out of reach if a sheet is inside, and back within reach if not.
    void coverContent();

    void show();
    void announceClose();
    void setApplicationModal(bool modal);
    void setStyle(Qt::WindowFlags flags, Qt::WindowModality modality);

    Window& window;
    WindowWidget widget;
    FrameAnimation animation;
    HostWindow host;
    SheetQueue sheets;
    ChildWindows children;
    WindowFocus focus;
    QPointer<QWidget> content;
    QPointer<SheetCover> cover;
    QPointer<SheetEdge> sheetEdge;
    SheetRoom room;
    QSize sizeAsSheet; ///< with the room for a sheet of its own
    std::weak_ptr<WindowDelegate> delegate;
    std::weak_ptr<Window> sheetParent;
    std::weak_ptr<Window> parentWindow;
    QPoint lastOrigin;
    bool isPlaced = false;
    bool isClosed = false;
    bool isKey = false;

private:
    void moveInto(WindowParts& parent);
    void moveOutOf(WindowParts& parent);
    void showInside(WindowParts& parent);
    void showAsTrueSheet(const WindowParts& parent);
    void fitInside(const WindowParts& parent, bool smoothly);
    void sheetWent();
    void makeRoom(bool smoothly);
    void drawSheetEdge();
    void endSheetsForUser();
    bool fillsScreen() const;
    QRect outerRect() const;
    QSize sheetSize() const;
    QRect roomArea() const;
};

struct Window::Parts : WindowParts
{
    using WindowParts::WindowParts;
};

} // namespace tljira
