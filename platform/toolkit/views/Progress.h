#pragma once

#include <QString>

class QLabel;
class QProgressBar;

namespace tljira {

// How far something is, in views that change many times a second. What is seen changes at once; screen readers are told
// of each view at most once a second, and never of less than what it came to. An absent view is a quiet no-op.

/// The bar takes the value if it lies in its range.
void showProgress(QProgressBar* bar, int value);
void showProgress(QLabel* label, const QString& text);

} // namespace tljira
