#pragma once

class QWidget;

namespace tljira {

/// The superview of all views that stand in no window: never shown, so that making such a view visible shows nothing
/// yet.
QWidget* offScreen();

} // namespace tljira
