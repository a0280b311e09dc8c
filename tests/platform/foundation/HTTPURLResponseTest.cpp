#include "platform/foundation/loading/HTTPURLResponse.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

tljira::HTTPURLResponse response()
{
    return {QStringLiteral("https://h/x"),
            200,
            {{QStringLiteral("Via"), QStringLiteral("a")},
             {QStringLiteral("Content-Type"), QStringLiteral("text")},
             {QStringLiteral("via"), QStringLiteral("b")}},
            4};
}

TEST(HTTPURLResponse, fieldsAreFoundWithoutCaseAndRepeatedOnesJoined)
{
    EXPECT_EQ(response().valueForHTTPHeaderField(QStringLiteral("content-TYPE")), QStringLiteral("text"));
    EXPECT_EQ(response().valueForHTTPHeaderField(QStringLiteral("VIA")), QStringLiteral("a, b"));
    EXPECT_EQ(response().valueForHTTPHeaderField(QStringLiteral("Server")), std::nullopt);
}

TEST(HTTPURLResponse, descriptionNamesAddressStatusAndFields)
{
    EXPECT_EQ(describe(response()), QStringLiteral("{ URL: https://h/x } { Status Code: 200, Headers {\n"
                                                   "    \"Content-Type\" = text;\n"
                                                   "    Via = \"a, b\";\n"
                                                   "} }"));
}

} // namespace
