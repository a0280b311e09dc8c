#include "platform/foundation/Secrets.h"

#include "platform/foundation/Log.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using namespace Qt::StringLiterals;
using tljira::SecretKind;
using tljira::withoutSecrets;
using tljira::withoutTokens;

TEST(Secrets, areHiddenWhereverTheyStand)
{
    tljira::hide(SecretKind::Token, u"tok/en+1="_s);
    tljira::hide(SecretKind::Login, u"geheim"_s);
    EXPECT_EQ(withoutSecrets(u"tok/en+1= xgeheimx geheim tok%2Fen%2B1%3D."_s), u"*** x***x *** ***."_s);
    EXPECT_EQ(withoutTokens(u"tok/en+1= xgeheimx geheim"_s), u"*** xgeheimx geheim"_s);
    EXPECT_EQ(withoutSecrets(u"nothing of them"_s), u"nothing of them"_s);
}

TEST(Secrets, thatAreShortAreHiddenWhereTheyStandAlone)
{
    tljira::hide(SecretKind::Login, u"1"_s);
    EXPECT_EQ(withoutSecrets(u"password 1 of 11 at host1, \"1\""_s), u"password *** of 11 at host1, \"***\""_s);
}

TEST(Secrets, thatAreBlankAreNone)
{
    tljira::hide(SecretKind::Token, QString());
    tljira::hide(SecretKind::Token, u" "_s);
    EXPECT_EQ(tljira::hideWhileHeld(SecretKind::Token, QString()), nullptr);
    EXPECT_EQ(withoutSecrets(u"a b"_s), u"a b"_s);
}

TEST(Secrets, areHiddenAsLongAsTheyAreHeld)
{
    auto one = tljira::hideWhileHeld(SecretKind::Login, u"password"_s);
    auto other = tljira::hideWhileHeld(SecretKind::Login, u"password"_s);
    EXPECT_EQ(withoutSecrets(u"a password"_s), u"a ***"_s);
    one = nullptr;
    EXPECT_EQ(withoutSecrets(u"a password"_s), u"a ***"_s);
    other = nullptr;
    EXPECT_EQ(withoutSecrets(u"a password"_s), u"a password"_s);
}

TEST(Secrets, theLongerOneIsHiddenFirst)
{
    tljira::hide(SecretKind::Login, u"secret"_s);
    tljira::hide(SecretKind::Login, u"secrets of mine"_s);
    EXPECT_EQ(withoutSecrets(u"secrets of mine, secret"_s), u"***, ***"_s);
}

TEST(Secrets, areTheNewestOnes)
{
    for (int number = 0; number < 40; ++number) {
        tljira::hide(SecretKind::Login, u"always in use"_s);
        tljira::hide(SecretKind::Login, u"session-%1-"_s.arg(number));
    }
    EXPECT_EQ(withoutSecrets(u"session-39- session-10- always in use"_s), u"*** *** ***"_s);
    EXPECT_EQ(withoutSecrets(u"session-0-"_s), u"session-0-"_s);
}

TEST(Secrets, ofAnAuthorizationAreItsCredentialsInEachForm)
{
    tljira::hideAuthorization(u"Basic "_s + QString::fromLatin1(QByteArray("anna:api:token").toBase64()));
    tljira::hideAuthorization(u"Bearer access-token"_s);
    EXPECT_EQ(withoutTokens(u"anna api:token access-token YW5uYTphcGk6dG9rZW4="_s), u"anna *** *** ***"_s);
}

TEST(Secrets, areInNoValueAtAnyDepth)
{
    tljira::hide(SecretKind::Token, u"the-token"_s);
    const auto of = [](const char* text) { return QJsonDocument::fromJson(text).object(); };
    EXPECT_EQ(
        withoutTokens(QJsonValue(of(R"({"a":["the-token",1,null,{"the-token is bad":"no the-token"}],"b":true})"))),
        QJsonValue(of(R"({"a":["***",1,null,{"*** is bad":"no ***"}],"b":true})")));
}

struct Field
{
    const char* text;
    const char* blanked;
};

void PrintTo(const Field& field, std::ostream* out)
{
    *out << field.text;
}

class SecretField : public testing::TestWithParam<Field>
{
};

TEST_P(SecretField, isHiddenThoughNobodyKnowsWhatItHolds)
{
    EXPECT_EQ(withoutSecrets(QString::fromUtf8(GetParam().text)), QString::fromUtf8(GetParam().blanked));
}

INSTANTIATE_TEST_SUITE_P(
    All, SecretField,
    testing::Values(Field{"host: https://anna:p@ss@h:8443/jira", "host: https://anna:***@h:8443/jira"},
                    Field{"https://h:8443/a?b=c@d", "https://h:8443/a?b=c@d"},
                    Field{"    \"Set-Cookie\" = \"S=\\\"1; Path=/\";\n    Server = x;",
                          "    \"Set-Cookie\" = ***;\n    Server = x;"},
                    Field{"Cookie: a=b; c=d\r\nHost: h", "Cookie: ***\r\nHost: h"},
                    Field{"Proxy-Authorization: Basic eA==\nx", "Proxy-Authorization: ***\nx"},
                    Field{R"({"authorization":"Bearer x","name":"n"})", R"({"authorization":***,"name":"n"})"},
                    Field{"    password = geheim;\n", "    password = ***;\n"},
                    Field{R"({"username":"anna","password":"ge\"h, eim"})", R"({"username":"anna","password":***})"},
                    Field{"os_username=anna&os_password=a%20b&x=y", "os_username=anna&os_password=***&x=y"},
                    Field{"Incorrect login or password", "Incorrect login or password"}));

// More than a regular expression finds memory to go back on.
TEST(Secrets, ofAFieldAreHiddenHoweverLongTheyAre)
{
    const QString secret = u"ge\\\"heim "_s.repeated(500000);
    EXPECT_EQ(withoutSecrets(u"password = \""_s + secret + u"\";\nname = n;"_s), u"password = ***;\nname = n;"_s);
    EXPECT_EQ(withoutSecrets(u"\"cookie\":\""_s + secret + u"\",\"name\":\"n\""_s), u"\"cookie\":***,\"name\":\"n\""_s);
    EXPECT_EQ(withoutSecrets(u"Cookie: "_s + secret + u"\r\nHost: h"_s), u"Cookie: ***\r\nHost: h"_s);
    const QString word = u"geheim"_s.repeated(500000);
    EXPECT_EQ(withoutSecrets(u"password="_s + word + u"&x=y"_s), u"password=***&x=y"_s);
    EXPECT_EQ(withoutSecrets(u"https://anna:"_s + word + u"@h/"_s), u"https://anna:***@h/"_s);
    const QString many = u"password = geheim; "_s.repeated(20000);
    EXPECT_EQ(withoutSecrets(many), u"password = ***; "_s.repeated(20000));
}

// There Qt's regular expressions give up after ten million steps.
TEST(Secrets, ofAFieldAreHiddenHoweverLongTheyAreWithoutMachineCodeToo)
{
    qputenv("QT_ENABLE_REGEXP_JIT", "0");
    const QString word(12000000, u'x');
    const QString noUser = u"https://h:"_s + word + u" a@b "_s;
    EXPECT_EQ(withoutSecrets(noUser + u"https://anna:"_s + word + u"@h/"_s), noUser + u"https://anna:***@h/"_s);
}

TEST(Secrets, ofAFieldAreHiddenBesideHalfACharacter)
{
    const QString name = u"name = "_s + QChar(0xDC00) + u";\n"_s;
    EXPECT_EQ(withoutSecrets(name + u"password = geheim;\n"_s), u"name = ?;\npassword = ***;\n"_s);
}

TEST(Secrets, areTokensInNoLineOfALogThatShowsTheOthers)
{
    const tests::LogCapture capture;
    tljira::hide(SecretKind::Token, u"the-token"_s);
    tljira::hide(SecretKind::Login, u"the-password"_s);
    tljira::log(u"%@ %@", u"the-token"_s, u"the-password"_s);
    tljira::setLogSettings({.showsSecrets = false});
    tljira::log(u"%@ %@", u"the-token"_s, u"the-password"_s);
    EXPECT_EQ(capture.lines(), (QStringList{u"*** the-password"_s, u"*** ***"_s}));
}

} // namespace
