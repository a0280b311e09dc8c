#pragma once

#include "tests/kit/DesktopKeyring.h"
#include "tests/kit/WithKeyringOption.h"

namespace tests {

/// The same on a desktop of its own, there until all else of the test has gone. The test starts its keyring.
class WithKeyring : public WithKeyringOption
{
protected:
    DesktopKeyring keyring;
};

} // namespace tests
