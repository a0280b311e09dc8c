#pragma once

class QWidget;

namespace tljira {

/// Whether the control takes text of one line that the user types.
bool isTextField(const QWidget& control);

/// Whether it takes text of many lines, where Return is text too.
bool isTextArea(const QWidget& control);

} // namespace tljira
