#pragma once

#include <chrono>
#include <functional>

namespace tests {

/// Runs the event loop until `condition` holds; false when it still does not after `limit`. The limit is generous
/// because it is only ever reached by a test that fails.
bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit = std::chrono::seconds(60));

/// Runs the event loop until everything that is queued on the main thread at this moment, and what that queues in turn,
/// is done.
void drainMainQueue();

} // namespace tests
