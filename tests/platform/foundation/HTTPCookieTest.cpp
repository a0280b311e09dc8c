#include "platform/foundation/loading/HTTPCookie.h"

#include <gtest/gtest.h>

namespace {

using tljira::HTTPCookie;

HTTPCookie cookieOf(const char* line)
{
    const auto cookie = HTTPCookie::fromNetscapeLine(line);
    EXPECT_TRUE(cookie) << line;
    return cookie.value_or(HTTPCookie());
}

const QString http = QStringLiteral("http");
const QString https = QStringLiteral("https");
const QString host = QStringLiteral("jira.example.test");

TEST(HTTPCookie, isReadFromALine)
{
    const HTTPCookie cookie = cookieOf("#HttpOnly_.example.test\tTRUE\t/jira\tTRUE\t4102444800\tname\tva=lue");
    EXPECT_EQ(cookie.domain, QStringLiteral(".example.test"));
    EXPECT_TRUE(cookie.includesSubdomains);
    EXPECT_EQ(cookie.path, QStringLiteral("/jira"));
    EXPECT_TRUE(cookie.isSecure);
    EXPECT_TRUE(cookie.isHTTPOnly);
    EXPECT_EQ(cookie.expires, 4102444800);
    EXPECT_EQ(cookie.name, QStringLiteral("name"));
    EXPECT_EQ(cookie.value, QStringLiteral("va=lue"));
    EXPECT_FALSE(cookie.isSessionOnly());
}

TEST(HTTPCookie, becomesTheLineItWasReadFrom)
{
    for (const char* line : {"#HttpOnly_.example.test\tTRUE\t/jira\tTRUE\t4102444800\tname\tvalue",
                             "jira.example.test\tFALSE\t/\tFALSE\t0\tempty\t"})
        EXPECT_EQ(cookieOf(line).netscapeLine(), QByteArray(line));
}

TEST(HTTPCookie, isNothingForOtherLines)
{
    for (const char* line :
         {"", "# a comment", "a\tb", "h\tFALSE\t/\tFALSE\tsoon\tname\tvalue", "h\tFALSE\t/\tFALSE\t0\t\tvalue",
          "\tFALSE\t/\tFALSE\t0\tname\tvalue", "h\tFALSE\t/\tFALSE\t0\tname\tvalue\tmore"})
        EXPECT_FALSE(HTTPCookie::fromNetscapeLine(line)) << line;
}

TEST(HTTPCookie, goesToItsHostOnly)
{
    const HTTPCookie cookie = cookieOf("jira.example.test\tFALSE\t/\tFALSE\t0\tn\tv");
    EXPECT_TRUE(cookie.matches(http, host, QStringLiteral("/rest")));
    EXPECT_TRUE(cookie.matches(http, QStringLiteral("JIRA.example.test"), QString()));
    EXPECT_FALSE(cookie.matches(http, QStringLiteral("sub.jira.example.test"), QStringLiteral("/")));
    EXPECT_FALSE(cookie.matches(http, QStringLiteral("example.test"), QStringLiteral("/")));
}

TEST(HTTPCookie, goesToHostsBelowItsDomain)
{
    const HTTPCookie cookie = cookieOf(".example.test\tTRUE\t/\tFALSE\t0\tn\tv");
    EXPECT_TRUE(cookie.matches(http, host, QStringLiteral("/")));
    EXPECT_TRUE(cookie.matches(http, QStringLiteral("example.test"), QStringLiteral("/")));
    EXPECT_FALSE(cookie.matches(http, QStringLiteral("badexample.test"), QStringLiteral("/")));
}

TEST(HTTPCookie, goesToItsPathAndBelow)
{
    const HTTPCookie cookie = cookieOf("jira.example.test\tFALSE\t/jira\tFALSE\t0\tn\tv");
    EXPECT_TRUE(cookie.matches(http, host, QStringLiteral("/jira")));
    EXPECT_TRUE(cookie.matches(http, host, QStringLiteral("/jira/rest")));
    EXPECT_FALSE(cookie.matches(http, host, QStringLiteral("/jirafe")));
    EXPECT_FALSE(cookie.matches(http, host, QStringLiteral("/")));
}

TEST(HTTPCookie, keepsToSecureConnectionsWhereItMust)
{
    const HTTPCookie cookie = cookieOf("jira.example.test\tFALSE\t/\tTRUE\t0\tn\tv");
    EXPECT_TRUE(cookie.matches(https, host, QStringLiteral("/")));
    EXPECT_FALSE(cookie.matches(http, host, QStringLiteral("/")));
}

TEST(HTTPCookie, takesThePlaceOfOneWithItsDomainPathAndName)
{
    const HTTPCookie cookie = cookieOf("jira.example.test\tFALSE\t/\tFALSE\t0\tn\tv");
    EXPECT_TRUE(cookie.isSameSlotAs(cookieOf("JIRA.example.test\tFALSE\t/\tTRUE\t9\tn\tother")));
    EXPECT_FALSE(cookie.isSameSlotAs(cookieOf("jira.example.test\tFALSE\t/a\tFALSE\t0\tn\tv")));
    EXPECT_FALSE(cookie.isSameSlotAs(cookieOf("jira.example.test\tFALSE\t/\tFALSE\t0\tm\tv")));
    EXPECT_FALSE(cookie.isSameSlotAs(cookieOf("other.example.test\tFALSE\t/\tFALSE\t0\tn\tv")));
}

} // namespace
