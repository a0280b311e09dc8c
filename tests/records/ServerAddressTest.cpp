#include "records/ServerAddress.h"

#include "records/SavedLogin.h"
#include "records/TLJiraOptions.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

class ServerAddress : public testing::Test
{
protected:
    ~ServerAddress() override { TLJiraOptions::use({}); }

    static void useWhole() { TLJiraOptions::use({.address = TLJiraOptions::Address::Whole}); }
};

TEST_F(ServerAddress, isSchemeAndHost)
{
    for (const QString& address : {u"https://h"_s, u"https://h/"_s, u"https://h:8443/jira/"_s, u"https://u:p@h?q#f"_s})
        EXPECT_EQ(records::baseOf(address), u"https://h/"_s);
    EXPECT_EQ(records::baseOf(u"http://[::1]:8080/"_s), u"http://::1/"_s);
    EXPECT_EQ(records::baseOf(u"jiraUrl"_s), u"(null)://(null)/"_s);
    EXPECT_EQ(records::baseOf(u"h:8443/x"_s), u"h://(null)/"_s);
}

TEST_F(ServerAddress, canBeTheWholeOfIt)
{
    useWhole();
    EXPECT_EQ(records::baseOf(u"https://h"_s), u"https://h/"_s);
    EXPECT_EQ(records::baseOf(u"https://h:8443"_s), u"https://h:8443/"_s);
    EXPECT_EQ(records::baseOf(u"https://host:8443/jira"_s), u"https://host:8443/jira/"_s);
    EXPECT_EQ(records::baseOf(u"https://h/a//B/?q=/x#/y"_s), u"https://h/a/B/"_s);
    EXPECT_EQ(records::baseOf(u"https://user:pw@h:8443/jira"_s), u"https://h:8443/jira/"_s);
    EXPECT_EQ(records::baseOf(u"http://[::1]:8080/jira"_s), u"http://[::1]:8080/jira/"_s);
    EXPECT_EQ(records::baseOf(u"http://[::1]"_s), u"http://[::1]/"_s);
    EXPECT_EQ(records::baseOf(u"jiraUrl"_s), u"(null)://(null)/"_s);
    EXPECT_EQ(records::baseOf(u"h:8443/x"_s), u"h://(null)/"_s);
    EXPECT_EQ(records::baseOf(u"https://h/a b"_s), u"(null)://(null)/"_s);
}

TEST_F(ServerAddress, tellsServersApartByWhatCounts)
{
    const QString one = u"https://h:8443/jira"_s;
    EXPECT_TRUE(records::isSameServer(one, u"HTTPS://H/other"_s));
    EXPECT_FALSE(records::isSameServer(one, u"http://h:8443/jira"_s));
    useWhole();
    for (const QString& same : {u"https://h:8443/jira/"_s, u"HTTPS://H:8443/jira"_s, u"https://u@h:8443/jira?q"_s})
        EXPECT_TRUE(records::isSameServer(one, same)) << same.toStdString();
    for (const QString& other : {u"https://h/jira"_s, u"https://h:8443/"_s, u"https://h:8443/Jira"_s,
                                 u"http://h:8443/jira"_s, u"https://h:8444/jira"_s, u""_s})
        EXPECT_FALSE(records::isSameServer(one, other)) << other.toStdString();
    EXPECT_TRUE(records::isSameServer(u"https://h:443/"_s, u"https://h"_s));
    EXPECT_TRUE(records::isSameServer(u"http://h:80"_s, u"http://h/"_s));
}

TEST_F(ServerAddress, isThatOfAServerOnlyWithSchemeAndHost)
{
    const std::pair<QString, QString> pairs[] = {
        {u""_s, u"jiraUrl"_s},    {u"jira"_s, u"jiraUrl"_s},      {u"https:"_s, u"https:/"_s},
        {u"//h/x"_s, u"//h/y"_s}, {u"h:8443/x"_s, u"h:8443/y"_s}, {u"https://h/a b"_s, u"https://h/a c"_s}};
    for (const auto& [one, other] : pairs) {
        EXPECT_FALSE(records::isSameServer(one, other)) << one.toStdString();
        EXPECT_TRUE(records::isSameServer(one, one)) << one.toStdString();
    }
    EXPECT_FALSE(records::isSameServer(QJsonValue(), u""_s));
}

TEST_F(ServerAddress, hasAnOrigin)
{
    EXPECT_EQ(records::originOf(u"https://Host/x?y#z"_s), u"https://host:443"_s);
    EXPECT_EQ(records::originOf(u"HTTP://h:8080"_s), u"http://h:8080"_s);
    EXPECT_EQ(records::originOf(u"http://h:080/"_s), u"http://h:80"_s);
    EXPECT_EQ(records::originOf(u"http://[::1]:8080/x"_s), u"http://[::1]:8080"_s);
    EXPECT_EQ(records::originOf(u"https://jirä.example.test/a b"_s), u"https://jirä.example.test:443"_s);
}

TEST_F(ServerAddress, hasNoOriginThatReadersWouldDisagreeAbout)
{
    for (const QString& address :
         {u""_s, u"(null)://(null)/x"_s, u"ftp://h/"_s, u"h/x"_s, u"https:///x"_s, u"https://u@h/"_s,
          u"https://h@evil.test/"_s, u"https://h\\@evil.test/"_s, u"https://h\\evil.test/"_s,
          u"https://h%2eevil.test/"_s, u"https://h:/"_s, u"https://h:x/"_s, u"https://h:123456/"_s,
          u"https://h evil.test/"_s, u" https://h/"_s, u"https://h\n/"_s, u"https://h:80:90/"_s, u"https://::1/"_s})
        EXPECT_EQ(records::originOf(address), std::nullopt) << address.toStdString();
}

TEST_F(ServerAddress, mayBeOfAnyLength)
{
    const QString host = QString(12000000, u'a');
    EXPECT_EQ(records::originOf(u"https://"_s + host + u"/x"_s), u"https://"_s + host + u":443"_s);
    EXPECT_EQ(records::originOf(u"https://"_s + host + u" x"_s), std::nullopt);
    EXPECT_EQ(records::originOf(u"https://"_s + host + u"@h/"_s), std::nullopt);
}

} // namespace
