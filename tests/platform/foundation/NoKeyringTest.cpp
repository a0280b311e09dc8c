// A build without QtKeychain: NoKeyring.cpp is part of this program and stands in front of the library's.

#include "platform/foundation/settings/Keyring.h"
#include "tests/kit/WaitUntil.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using tljira::Error;
using tljira::Keyring;

TEST(NoKeyring, saysSoLater)
{
    std::vector<std::optional<Error>> errors;
    Keyring::read([&](const std::optional<QString>& text, const auto& error) {
        EXPECT_EQ(text, std::nullopt);
        errors.push_back(error);
    });
    Keyring::write(QStringLiteral("text"), [&](const auto& error) { errors.push_back(error); });
    Keyring::remove([&](const auto& error) { errors.push_back(error); });
    EXPECT_TRUE(errors.empty());
    ASSERT_TRUE(tests::waitUntil([&] { return errors.size() == 3; }));
    for (const auto& error : errors) {
        ASSERT_TRUE(error.has_value());
        EXPECT_EQ(error->domain, QLatin1String(Keyring::errorDomain));
        EXPECT_EQ(error->code, static_cast<qint64>(Keyring::Problem::NotBuiltIn));
        EXPECT_EQ(error->localizedDescription(),
                  QStringLiteral("This program was built without support for the desktop’s keyring."));
        EXPECT_EQ(Keyring::sentenceOf(*error), error->localizedDescription());
        EXPECT_EQ(Keyring::detailOf(*error), QString());
    }
}

} // namespace
