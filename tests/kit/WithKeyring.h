#pragma once

#include "tests/kit/DesktopKeyring.h"
#include "tests/kit/WithKeyringOption.h"

namespace tests {

/// The same with a desktop that has a keyring, there until all else of the test has gone.
class WithKeyring : public WithKeyringOption
{
protected:
    DesktopKeyring keyring;
};

} // namespace tests
