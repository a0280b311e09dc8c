#pragma once

#include "platform/foundation/Export.h"

#include <QString>

#include <chrono>
#include <functional>

namespace tljira {

/// Removes from `folder` what processes that were killed left there: items whose name `isOurs` knows, that belong to
/// this user, were last written longer ago than `age`, and that nobody has locked (see os::FileLock). A folder goes
/// with everything in it, and counts as written when something in it was. Links are left alone, and so is what cannot
/// be locked. An `age` of zero is for items that are never there unlocked while their owner lives.
TL_EXPORT void removeLeftovers(const QString& folder, const std::function<bool(const QString& name)>& isOurs,
                               std::chrono::hours age = std::chrono::hours(24));

} // namespace tljira
