#pragma once

#include "constants/FrameworkBundle.h"
#include "platform/toolkit/nib/Bundle.h"

namespace tljira {

/// The framework's own interface files.
inline std::optional<Bundle> frameworkBundle()
{
    return Bundle::bundleWithIdentifier(QLatin1String(frameworkBundleIdentifier));
}

} // namespace tljira
