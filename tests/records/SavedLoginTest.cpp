#include "records/SavedLogin.h"

#include "records/KeyringEntry.h"
#include "records/TLJiraOptions.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(SavedLogin, thatLiesInTheFileIsNotSeenWhereTheHostChoseTheKeyring)
{
    records::savedLogin().setObject(u"1234"_s, records::savedValueKey);
    ASSERT_EQ(records::secretsInMemory(), (QJsonObject{{records::savedValueKey, u"1234"_s}}));
    TLJiraOptions::use({.secrets = TLJiraOptions::Secrets::Keyring});
    EXPECT_EQ(records::secretsInMemory(), QJsonObject());
    TLJiraOptions::use({});
}

} // namespace
