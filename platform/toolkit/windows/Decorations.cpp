#include "platform/toolkit/windows/Decorations.h"

#include <QWidget>
#include <QWindow>

namespace tljira {

namespace {

std::optional<QMargins> pretended;

} // namespace

QMargins decorationsOf(const QWidget& widget)
{
    const QWindow* handle = widget.windowHandle();
    const QMargins margins = pretended ? *pretended : handle ? handle->frameMargins() : QMargins();
    // Under X11 Qt measures also a frame that the window manager has only begun to make.
    const bool isFrame = margins.left() >= 0 && margins.top() >= 0 && margins.right() >= 0 && margins.bottom() >= 0;
    return isFrame ? margins : QMargins();
}

void pretendDecorations(std::optional<QMargins> margins)
{
    pretended = margins;
}

} // namespace tljira
