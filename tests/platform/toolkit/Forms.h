#pragma once

#include "platform/toolkit/nib/Bundle.h"

namespace tests {

/// The interface files of this folder's forms/.
inline tljira::Bundle forms()
{
    return *tljira::Bundle::bundleWithIdentifier(QStringLiteral("com.example.forms"));
}

} // namespace tests
