#include "platform/foundation/loading/URLRequest.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using tljira::URLRequest;
using tljira::URLRequestCachePolicy;

TEST(URLRequest, beginsAsAGetWithAMinutesPatience)
{
    const URLRequest request(QStringLiteral("https://h/"));
    EXPECT_EQ(request.url, QStringLiteral("https://h/"));
    EXPECT_EQ(request.HTTPMethod, QStringLiteral("GET"));
    EXPECT_EQ(request.timeoutInterval, 60.0);
    EXPECT_EQ(request.cachePolicy, URLRequestCachePolicy::UseProtocolCachePolicy);
    EXPECT_TRUE(request.HTTPShouldHandleCookies);
    EXPECT_FALSE(request.HTTPBody);
    EXPECT_TRUE(request.headers().empty());
}

TEST(URLRequest, addingJoinsWithACommaAndNoBlank)
{
    URLRequest request(std::nullopt);
    request.addValue(QStringLiteral("a"), QStringLiteral("Content-Type"));
    request.addValue(QStringLiteral("b"), QStringLiteral("content-TYPE"));
    EXPECT_EQ(request.headers(),
              (std::vector<URLRequest::Header>{{QStringLiteral("Content-Type"), QStringLiteral("a,b")}}));
}

TEST(URLRequest, settingReplacesInPlace)
{
    URLRequest request(std::nullopt);
    request.addValue(QStringLiteral("1"), QStringLiteral("A"));
    request.addValue(QStringLiteral("2"), QStringLiteral("B"));
    request.setValue(QStringLiteral("3"), QStringLiteral("a"));
    request.setValue(QStringLiteral("4"), QStringLiteral("C"));
    EXPECT_EQ(request.headers(), (std::vector<URLRequest::Header>{{QStringLiteral("A"), QStringLiteral("3")},
                                                                  {QStringLiteral("B"), QStringLiteral("2")},
                                                                  {QStringLiteral("C"), QStringLiteral("4")}}));
}

TEST(URLRequest, fieldsAreFoundWithoutCase)
{
    URLRequest request(std::nullopt);
    request.setValue(QStringLiteral("v"), QStringLiteral("X-Field"));
    EXPECT_EQ(request.valueForHTTPHeaderField(QStringLiteral("x-fIELD")), QStringLiteral("v"));
    EXPECT_EQ(request.valueForHTTPHeaderField(QStringLiteral("x-other")), std::nullopt);
}

} // namespace
