#pragma once

#include "platform/toolkit/ChildWindows.h"
#include "platform/toolkit/FrameAnimation.h"
#include "platform/toolkit/SheetEdge.h"
#include "platform/toolkit/SheetQueue.h"
#include "platform/toolkit/Window.h"
#include "platform/toolkit/WindowWidget.h"

#include <QMargins>
#include <QPoint>
#include <QPointer>
#include <QRect>

#include <memory>

namespace tljira {

/// The inside of a window, which its widget, its sheets and its child windows work with. Rectangles are Qt's, of the
/// content.
struct WindowParts
{
    explicit WindowParts(Window& owner);
    ~WindowParts();

    static WindowParts& of(const Window& some);

    // What the widget reports.
    bool userWantsToClose();
    void geometryChanged();
    void contentWantsLayout();
    void contentLeft(const QObject* view);
    void visibilityChanged(bool visible);
    void keyChanged(bool isKey);

    QRect contentRect() const;
    void placeContentRect(const QRect& rect, bool smoothly);
    void moveBy(const QPoint& distance);
    QMargins decorations() const;
    void layOutContent(const QSize& size);
    void limitUserToContent();
    void takeAlong();

    void becomeSheetOf(const std::shared_ptr<Window>& parent);
    void leaveSheet();
    void showAsSheet();
    void drawSheetEdge();

    void show();
    void announceClose();
    void focusFirstControl();
    void setApplicationModal(bool modal);
    void setStyle(Qt::WindowFlags flags, Qt::WindowModality modality);

    Window& window;
    WindowWidget widget;
    FrameAnimation animation;
    SheetQueue sheets;
    ChildWindows children;
    QPointer<QWidget> content;
    QPointer<SheetEdge> sheetEdge;
    std::weak_ptr<WindowDelegate> delegate;
    std::weak_ptr<Window> sheetParent;
    std::weak_ptr<Window> parentWindow;
    QPoint lastOrigin;
    bool isPlaced = false;
    bool isClosed = false;
};

struct Window::Parts : WindowParts
{
    using WindowParts::WindowParts;
};

} // namespace tljira
