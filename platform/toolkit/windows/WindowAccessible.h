#pragma once

namespace tljira {

/// Tells screen readers what our windows are, once per process: dialogs, whose sheets are modal dialogs inside them.
/// What a sheet covers is not there for them.
void makeWindowsAccessible();

} // namespace tljira
