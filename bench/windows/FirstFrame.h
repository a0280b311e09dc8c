#pragma once

#include <QWidget>

#include <functional>

namespace bench {

/// Seconds from the call of `open` until the window that it answers has painted its first frame.
double secondsToFirstFrame(const std::function<QWidget*()>& open);

/// Runs the event loop until the condition holds. Ends the program after five minutes: nothing here takes so long.
void runUntil(const std::function<bool()>& condition);

} // namespace bench
