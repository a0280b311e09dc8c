#pragma once

#include "platform/toolkit/windows/Window.h"
#include "tests/kit/Printers.h"

#include <QString>
#include <QStringList>

namespace tests {

/// In words, what is wrong with how a window or a sheet is laid out: controls in sight whose text is cut off, that
/// overlap another one, or that lie partly outside of the window. Empty if all is well. What can be scrolled into sight
/// lies inside. Waits until the window has stopped moving.
QStringList layoutFlaws(tljira::Window& window);

/// Keeps a picture of the window, with the sheet that is up in it, as `name`.png in the folder that the environment
/// variable LAYOUT_PICTURES names. Without it nothing is kept.
void keepPicture(const tljira::Window& window, const QString& name);

} // namespace tests
