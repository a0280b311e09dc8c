#include "platform/foundation/loading/URLSessionConfiguration.h"

#include "platform/foundation/loading/HTTPCookieStorage.h"

#include <gtest/gtest.h>

namespace {

using tljira::URLSessionConfiguration;

TEST(URLSessionConfiguration, startsWithTheJarOfTheProcess)
{
    const auto configuration = URLSessionConfiguration::defaultSessionConfiguration();
    EXPECT_TRUE(configuration.HTTPShouldSetCookies);
    EXPECT_EQ(configuration.HTTPCookieStorage, tljira::HTTPCookieStorage::sharedHTTPCookieStorage());
    EXPECT_EQ(configuration.HTTPCookieAcceptPolicy, tljira::HTTPCookieAcceptPolicy::Always);
    EXPECT_TRUE(configuration.routes.isEmpty());
    EXPECT_EQ(configuration.userAgent, QStringLiteral("TLJiraController/1.0"));
}

TEST(URLSessionConfiguration, startsWithTheRoutesOfTheProcess)
{
    const QStringList routes = {QStringLiteral("jira.example.test:80:127.0.0.1:8080")};
    URLSessionConfiguration::setDefaultRoutes(routes);
    EXPECT_EQ(URLSessionConfiguration::defaultSessionConfiguration().routes, routes);
}

TEST(URLSessionConfiguration, knowsTheFormOfARoute)
{
    for (const char* route :
         {"a:80:b:8080", "jira.example.test:443:127.0.0.1:1", "[::1]:80:[::1]:8080", "::127.0.0.1:80"})
        EXPECT_TRUE(URLSessionConfiguration::isRoute(QString::fromLatin1(route))) << route;
    for (const char* route : {"", "a", "a:80", "a:80:b", "a:x:b:80", "a:80:b:80:c", "::1:80:b:80"})
        EXPECT_FALSE(URLSessionConfiguration::isRoute(QString::fromLatin1(route))) << route;
}

} // namespace
