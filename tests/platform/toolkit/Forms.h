#pragma once

#include "platform/toolkit/Bundle.h"

namespace tests {

/// The interface files of this folder's forms/.
inline platform::Bundle forms()
{
    return *platform::Bundle::bundleWithIdentifier(QStringLiteral("com.example.forms"));
}

} // namespace tests
