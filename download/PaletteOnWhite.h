#pragma once

#include <QPalette>

/// The colours for content on a white ground, whatever the application's palette; its accent is kept.
QPalette paletteOnWhite(const QPalette& application);
