#pragma once

#include <functional>

namespace tests {

/// Refuses one call of malloc after the other, each in a process of its own in which `isRight` has not run yet.
/// The number of the first one after which `isRight` hangs or gives false, where it could end its process; 0 if there
/// is none.
int firstCallThatMisleads(const std::function<bool()>& isRight);

} // namespace tests
