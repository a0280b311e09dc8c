#pragma once

#include <QMargins>

#include <optional>

class QWidget;

namespace tljira {

/// What the window system draws around a top-level widget; nothing before it has put the widget on screen.
QMargins decorationsOf(const QWidget& widget);

/// For tests, where no window manager decorates: from now on every window is taken to have these margins. nullopt goes
/// back to the real ones.
void pretendDecorations(std::optional<QMargins> margins);

} // namespace tljira
