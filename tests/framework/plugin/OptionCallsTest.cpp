#include "framework/plugin/OptionCalls.h"

#include "tests/kit/Printers.h"

#include <gmock/gmock.h>

namespace {

using namespace Qt::StringLiterals;
using Options = TLJiraOptions;

class OptionCallsTest : public testing::Test
{
protected:
    Options optionsOf(const QVariantMap& named)
    {
        return OptionCalls::options(
            named, [this](const QString& line) { lines.append(line); }, problem);
    }
    /// Chosen, and no good.
    std::string problemOf(const QVariantMap& named)
    {
        optionsOf(named);
        return problem.toStdString();
    }

    QString problem = u"of before"_s;
    QStringList lines;
};

TEST_F(OptionCallsTest, areTheDescribedOnesWhereNothingIsChosen)
{
    EXPECT_EQ(optionsOf({}), Options());
    EXPECT_EQ(problem, QString());
}

TEST_F(OptionCallsTest, knowEachOption)
{
    const QVariantList documents = {u"odt"_s,
                                    QVariantMap{{u"extension"_s, u"ods"_s}, {u"packetExtension"_s, u"odz"_s}}};
    const Options expected{.address = Options::Address::Whole,
                           .signIn = Options::SignIn::Token,
                           .secrets = Options::Secrets::Keyring,
                           .documents = {{u"odt"_s}, {u"ods"_s, u"odz"_s}},
                           .log = Options::Log::off(),
                           .routes = {u"a:80:b:81"_s, u"c:80:d:81"_s},
                           .userAgent = u"Weaver/2.1"_s,
                           .proxy = u"http://proxy:3128"_s,
                           .authorities = {u"/etc/own.pem"_s, true}};
    EXPECT_EQ(optionsOf({{u"address"_s, u"whole"_s},
                         {u"signIn"_s, u"token"_s},
                         {u"secrets"_s, u"keyring"_s},
                         {u"documents"_s, documents},
                         {u"log"_s, u"off"_s},
                         {u"routes"_s, QVariantList{u"a:80:b:81"_s, u"c:80:d:81"_s}},
                         {u"userAgent"_s, u"Weaver/2.1"_s},
                         {u"proxy"_s, u"http://proxy:3128"_s},
                         {u"authorities"_s, u"/etc/own.pem"_s},
                         {u"replaceSystemAuthorities"_s, true}}),
              expected);
    EXPECT_EQ(problem, QString());
}

TEST_F(OptionCallsTest, knowWhatIsChosenWhenNothingElseIs)
{
    EXPECT_EQ(
        optionsOf({{u"address"_s, u"schemeAndHost"_s}, {u"signIn"_s, u"password"_s}, {u"secrets"_s, u"settings"_s}}),
        Options());
    EXPECT_EQ(optionsOf({{u"documents"_s, QVariantList()}}), Options{.documents = {}});
    EXPECT_EQ(optionsOf({{u"documents"_s, QStringList{u"odt"_s}}}), Options{.documents = {{u"odt"_s}}});
    EXPECT_EQ(optionsOf({{u"proxy"_s, QString()}}), Options{.proxy = QString()});
    EXPECT_EQ(problem, QString());
}

TEST_F(OptionCallsTest, blankTheLogThatIsChosenUnlessAskedNotTo)
{
    EXPECT_EQ(optionsOf({{u"log"_s, u"on"_s}}), Options{.log = Options::Log::on()});
    EXPECT_EQ(optionsOf({{u"log"_s, u"on"_s}, {u"logSecrets"_s, true}}), Options());
    EXPECT_EQ(optionsOf({{u"logSecrets"_s, false}}), Options{.log = Options::Log::on()});
    const Options told = optionsOf({{u"log"_s, u"signal"_s}});
    for (const auto& other : {Options::Log(), Options::Log::on(), Options::Log::off()})
        EXPECT_NE(told.log, other);
}

TEST_F(OptionCallsTest, sayWhatIsWrong)
{
    EXPECT_EQ(problemOf({{u"colour"_s, true}}), "This Jira plug-in has no option “colour”.");
    EXPECT_EQ(problemOf({{u"address"_s, u"Whole"_s}}), "The option “address” is “schemeAndHost” or “whole”.");
    EXPECT_EQ(problemOf({{u"signIn"_s, 1}}), "The option “signIn” is “password” or “token”.");
    EXPECT_EQ(problemOf({{u"secrets"_s, true}}), "The option “secrets” is “settings” or “keyring”.");
    EXPECT_EQ(problemOf({{u"log"_s, false}}), "The option “log” is “on” or “off” or “signal”.");
    EXPECT_EQ(problemOf({{u"logSecrets"_s, u"yes"_s}}), "The option “logSecrets” is either true or false.");
    EXPECT_EQ(problemOf({{u"replaceSystemAuthorities"_s, 1}}),
              "The option “replaceSystemAuthorities” is either true or false.");
    EXPECT_EQ(problemOf({{u"routes"_s, u"a:80:b:81"_s}}), "The option “routes” is a list.");
    EXPECT_EQ(problemOf({{u"documents"_s, u"odt"_s}}), "The option “documents” is a list.");
    const QVariantList noKinds{
        1,
        QString(),
        u"."_s,
        QVariantMap{{u"packetExtension"_s, u"odz"_s}},
        QVariantMap{{u"extension"_s, u"."_s}},
        QVariantMap{{u"extension"_s, u"odt"_s}, {u"packetExtension"_s, 1}},
        QVariantMap{{u"extension"_s, u"odt"_s}, {u"packetExtention"_s, u"odz"_s}},
    };
    for (const QVariant& kind : noKinds)
        EXPECT_EQ(problemOf({{u"documents"_s, QVariantList{kind}}}),
                  "The option “documents” is a list of extensions, as texts or as “extension” and “packetExtension”.");
    for (const char* text : {"userAgent", "proxy", "authorities"})
        EXPECT_EQ(problemOf({{QLatin1String(text), 1}}), std::string("The option “") + text + "” is a text.");
}

} // namespace
