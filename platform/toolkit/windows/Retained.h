#pragma once

#include <memory>

namespace tljira {

/// Keeps an object alive until control is back in the main thread's event loop: for callbacks that may drop the last
/// reference to something whose widgets are still busy with the event that caused the call.
void retainUntilNextTurn(std::shared_ptr<void> object);

} // namespace tljira
