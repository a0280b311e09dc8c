#pragma once

#include "records/TLJiraOptions.h"
#include "tests/kit/SignInWay.h"

#include <gtest/gtest.h>

namespace tests {

/// The first base of a test whose process chose the desktop's keyring for its login, as the options have to stand
/// before its client is made. The test's parameter is the way to sign in.
class WithKeyringOption : public testing::WithParamInterface<SignInWay>
{
protected:
    WithKeyringOption() { chooseKeyring(); }
    ~WithKeyringOption() { TLJiraOptions::use({}); }

    static void chooseKeyring()
    {
        using Options = TLJiraOptions;
        TLJiraOptions::use({.signIn = GetParam().isByToken ? Options::SignIn::Token : Options::SignIn::Password,
                            .secrets = Options::Secrets::Keyring});
    }
};

} // namespace tests
