#include "records/JAObject.h"
#include "tests/records/Json.h"

namespace {

TEST(JAObject, takesAnyDictionary)
{
    EXPECT_NE(JAObject::initWithDictionary({}), nullptr);
    EXPECT_NE(JAObject::initWithDictionary(tests::object(R"({"anything": [1, null]})")), nullptr);
}

} // namespace
