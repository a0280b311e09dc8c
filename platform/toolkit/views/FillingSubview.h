#pragma once

#include <QWidget>

namespace tljira {

/// Adds `view` to `superview` and keeps it at the superview's size, together with others added like this. A superview
/// without a layout gets one without margins. A null view is a quiet no-op.
void addFillingSubview(QWidget* superview, QWidget* view);

} // namespace tljira
