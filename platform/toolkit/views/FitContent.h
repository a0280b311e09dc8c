#pragma once

#include <QSize>

#include <memory>

class QWidget;

namespace tljira {

class Window;

/// What a view needs to show all that stands in it: its width, or more if that is too little, and the height for texts
/// that wrap at that width.
QSize neededSize(QWidget* view);

/// The same, without laying the view out first: for a view that is in sight, and has heard of all changes.
QSize neededSizeAsLaidOut(QWidget* view);

/// Makes a window larger that is too small for its content, as it is when a text came or a font changed. The title bar
/// stays where it is. Null windows, and those that are large enough, stay as they are.
void growToFit(const std::shared_ptr<Window>& window, bool animate);

/// The same for a content that is to be larger than it needs.
void growTo(const QSize& contentSize, const std::shared_ptr<Window>& window, bool animate);

} // namespace tljira
