#include "platform/foundation/Secrets.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"
#include "tests/platform/foundation/ScarceMemory.h"

#include <gtest/gtest.h>

#include <new>

namespace {

using namespace Qt::StringLiterals;
using tljira::SecretKind;

const QString secret = u"the-password"_s;

bool isHiddenWhileHeld()
{
    const auto held = tljira::hideWhileHeld(SecretKind::Login, secret);
    return tljira::withoutSecrets(secret) == u"***";
}

TEST(SecretsWithoutMemory, holdNobodyUp)
{
    const auto isHiddenTheSecondTime = [] {
        try {
            isHiddenWhileHeld();
        } catch (const std::bad_alloc&) {
            if (tljira::withoutSecrets(secret) != secret)
                return false;
        }
        return isHiddenWhileHeld();
    };
    EXPECT_EQ(tests::firstCallThatMisleads(isHiddenTheSecondTime), 0);
}

TEST(SecretsWithoutMemory, ofFieldsAreHidden)
{
    const auto isHidden = [] {
        return tljira::withoutSecrets(u"https://anna:x@h/ password=x&password=y&Cookie: x"_s) ==
               u"https://anna:***@h/ password=***&password=***&Cookie: ***";
    };
    EXPECT_EQ(tests::firstCallThatMisleads(isHidden), 0);
}

TEST(RouteWithoutMemory, isARoute)
{
    EXPECT_EQ(
        tests::firstCallThatMisleads([] { return tljira::URLSessionConfiguration::isRoute(u"h:80:127.0.0.1:8080"_s); }),
        0);
}

} // namespace
