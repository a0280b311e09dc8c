#include "platform/toolkit/Decorations.h"

#include <QWidget>
#include <QWindow>

namespace tljira {

namespace {

std::optional<QMargins> pretended;

} // namespace

QMargins decorationsOf(const QWidget& widget)
{
    if (pretended)
        return *pretended;
    const QWindow* handle = widget.windowHandle();
    return handle ? handle->frameMargins() : QMargins();
}

void pretendDecorations(std::optional<QMargins> margins)
{
    pretended = margins;
}

} // namespace tljira
