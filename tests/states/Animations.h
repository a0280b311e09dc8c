#pragma once

namespace tests {

/// Returns when all animations have ended that are under way, with what they lead to.
void waitForAnimations();

} // namespace tests
