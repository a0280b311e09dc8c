#include "records/CreatedDate.h"
#include "records/ServerAddress.h"
#include "tests/platform/foundation/ScarceMemory.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

TEST(DateWithoutMemory, isNotTakenForNone)
{
    const auto isThere = [] { return records::createdDate(u"2017-03-14T10:22:33.123+0100"_s).has_value(); };
    EXPECT_EQ(tests::firstCallThatMisleads(isThere), 0);
}

TEST(AddressWithoutMemory, isNotTakenForNone)
{
    const auto isThere = [] { return records::originOf(u"https://h/x"_s) == u"https://h:443"_s; };
    EXPECT_EQ(tests::firstCallThatMisleads(isThere), 0);
}

} // namespace
