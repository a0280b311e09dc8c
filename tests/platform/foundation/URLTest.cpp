#include "platform/foundation/values/URL.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using Part = std::optional<QString>;

struct Case
{
    const char16_t* text;
    Part scheme;
    Part host;
};

class Addresses : public testing::TestWithParam<Case>
{
};

TEST_P(Addresses, haveSchemeAndHost)
{
    const auto url = tljira::URL::parse(QString::fromUtf16(GetParam().text));
    ASSERT_TRUE(url);
    EXPECT_EQ(url->scheme, GetParam().scheme);
    EXPECT_EQ(url->host, GetParam().host);
}

INSTANTIATE_TEST_SUITE_P(
    All, Addresses,
    testing::Values(Case{u"https://jira.example.test/", QStringLiteral("https"), QStringLiteral("jira.example.test")},
                    Case{u"https://jira.example.test", QStringLiteral("https"), QStringLiteral("jira.example.test")},
                    Case{u"http://h:8443/x/y", QStringLiteral("http"), QStringLiteral("h")},
                    Case{u"https://user:pw@h/", QStringLiteral("https"), QStringLiteral("h")},
                    Case{u"https://h?q=//x@y", QStringLiteral("https"), QStringLiteral("h")},
                    Case{u"https://h#f@g", QStringLiteral("https"), QStringLiteral("h")},
                    Case{u"HTTPS://Jira.Example.TEST/", QStringLiteral("HTTPS"), QStringLiteral("Jira.Example.TEST")},
                    Case{u"http://[::1]:8080/x", QStringLiteral("http"), QStringLiteral("::1")},
                    Case{u"http://user@[fe80::1]/", QStringLiteral("http"), QStringLiteral("fe80::1")},
                    Case{u"http://[::1", QStringLiteral("http"), std::nullopt},
                    Case{u"jiraUrl", std::nullopt, std::nullopt}, Case{u"host.example.com", std::nullopt, std::nullopt},
                    Case{u"host.example.com/rest", std::nullopt, std::nullopt},
                    Case{u"host.example.com:8443/x", QStringLiteral("host.example.com"), std::nullopt},
                    Case{u"1http://h/", std::nullopt, std::nullopt}, Case{u"ht_tp://h/", std::nullopt, std::nullopt},
                    Case{u"://h/", std::nullopt, std::nullopt},
                    Case{u"a+b-c.1://h", QStringLiteral("a+b-c.1"), QStringLiteral("h")},
                    Case{u"//h/x", std::nullopt, QStringLiteral("h")},
                    Case{u"file:///tmp/x", QStringLiteral("file"), std::nullopt},
                    Case{u"https:/h/x", QStringLiteral("https"), std::nullopt},
                    Case{u"https://:80/", QStringLiteral("https"), std::nullopt}));

TEST(URL, hasPortAndPath)
{
    const auto parts = [](const char16_t* text) {
        const auto url = tljira::URL::parse(QString::fromUtf16(text));
        return url ? url->port.value_or(QStringLiteral("-")) + u' ' + url->path : QString();
    };
    EXPECT_EQ(parts(u"https://h:8443/jira/x"), QStringLiteral("8443 /jira/x"));
    EXPECT_EQ(parts(u"https://user:pw@h:8443"), QStringLiteral("8443 "));
    EXPECT_EQ(parts(u"https://h"), QStringLiteral("- "));
    EXPECT_EQ(parts(u"https://h:/"), QStringLiteral("- /"));
    EXPECT_EQ(parts(u"https://h:x/"), QStringLiteral("x /"));
    EXPECT_EQ(parts(u"https://h/a:1//b?c/d#e"), QStringLiteral("- /a:1//b"));
    EXPECT_EQ(parts(u"https://h?c/d"), QStringLiteral("- "));
    EXPECT_EQ(parts(u"http://[::1]:8080/x"), QStringLiteral("8080 /x"));
    EXPECT_EQ(parts(u"http://[::1]/x"), QStringLiteral("- /x"));
}

TEST(URL, cannotBeMadeOfEverything)
{
    for (const char16_t* text : {u"", u" ", u"https://h/a b", u" https://h/", u"https://h/\n", u"https://h/\t",
                                 u"https://h/\"x\"", u"https://h/\u007f", u"https://h/\u00a0"})
        EXPECT_FALSE(tljira::URL::parse(QString::fromUtf16(text))) << QString::fromUtf16(text).toStdString();
}

} // namespace
