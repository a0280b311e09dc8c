#pragma once

#include <QColor>
#include <QPalette>

namespace tljira {

// Colours that Qt's palettes lack, made to be read on a palette's Window colour.

/// Of help and of what is said beside the point: the palette's text, closer to its background.
QColor quietColor(const QPalette& palette);
QColor errorColor(const QPalette& palette);
/// Behind text in errorColor().
QColor errorBackground(const QPalette& palette);
QColor successColor(const QPalette& palette);
/// Of a button without a frame: the palette's highlight colour, closer to its text if need be.
QColor linkColor(const QPalette& palette);

/// `part`, between 0 and 1, of `color`, the rest of `other`.
QColor mixed(const QColor& color, const QColor& other, double part);

/// From 1, the same, to 21, black and white. Text is easy to read from 4.5 on.
double contrast(const QColor& color, const QColor& other);

} // namespace tljira
