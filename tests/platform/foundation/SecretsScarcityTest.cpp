#include "platform/foundation/Secrets.h"
#include "tests/platform/foundation/ScarceMemory.h"

#include <gtest/gtest.h>

#include <new>

namespace {

using namespace Qt::StringLiterals;
using tljira::SecretKind;

/// Whether the call of this number was refused; a call that is not there is not.
bool isRefused(int call, const QString& secret)
{
    const tests::ScarceMemory scarce(call);
    try {
        const auto held = tljira::hideWhileHeld(SecretKind::Login, secret);
        return false;
    } catch (const std::bad_alloc&) {
        return true;
    }
}

TEST(SecretsWithoutMemory, holdNobodyUp)
{
    const QString secret = u"the-password"_s;
    // What is made only once is there then.
    EXPECT_FALSE(isRefused(0, secret));
    int refused = 0;
    while (isRefused(refused + 1, secret))
        ++refused;
    // The place of the secret, and the pointer that holds it.
    EXPECT_GE(refused, 2);
    EXPECT_EQ(tljira::withoutSecrets(secret), secret);
    const auto held = tljira::hideWhileHeld(SecretKind::Login, secret);
    EXPECT_EQ(tljira::withoutSecrets(secret), u"***"_s);
}

} // namespace
