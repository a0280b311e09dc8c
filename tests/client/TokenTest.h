#pragma once

#include "records/SavedLogin.h"
#include "records/SavedToken.h"
#include "records/TLJiraOptions.h"
#include "tests/client/ClientTest.h"

#include <QFile>
#include <QJsonDocument>
#include <QStandardPaths>

namespace tests {

/// A way to sign in, as a test's parameter.
struct TokenKind
{
    const char* name;
    const char* user;
    const char* token;
    /// What requests have to say of it.
    std::string authorization;
};

inline std::ostream& operator<<(std::ostream& out, const TokenKind& kind)
{
    return out << kind.name;
}

inline TokenKind apiToken()
{
    const QByteArray pair = QByteArray(Jira::email) + ':' + Jira::apiToken;
    return {"basic", Jira::email, Jira::apiToken, "Basic " + pair.toBase64().toStdString()};
}

inline TokenKind accessToken()
{
    return {"bearer", "", Jira::accessToken, std::string("Bearer ") + Jira::accessToken};
}

/// A client of a host that chose tokens, with the server's address set and nobody signed in.
class TokenTest : public ClientTest
{
protected:
    explicit TokenTest(const standin::Options& options = {})
        : ClientTest(options)
    {
        TLJiraOptions::use({.signIn = TLJiraOptions::SignIn::Token});
        client->setHost(Jira::address);
    }
    /// Whatever happens, no line of the log has a token.
    ~TokenTest() override
    {
        TLJiraOptions::use({});
        for (const QString& line : log.lines()) {
            for (const char* secret : {Jira::apiToken, Jira::accessToken}) {
                EXPECT_FALSE(line.contains(QLatin1String(secret))) << line.toStdString();
                EXPECT_FALSE(line.contains(QString::fromLatin1(QByteArray(secret).toBase64()))) << line.toStdString();
            }
            EXPECT_FALSE(line.contains(QString::fromStdString(apiToken().authorization))) << line.toStdString();
        }
    }

    void signIn(const TokenKind& kind)
    {
        events.clear();
        client->login(QString::fromUtf8(kind.user), QString::fromUtf8(kind.token), loginCallBack());
        ASSERT_TRUE(waitForEvents(2));
        ASSERT_THAT(events, testing::ElementsAre("valid", "session, no error"));
        events.clear();
        server.forgetRequests();
    }

    static QString settingsPath()
    {
        return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
               QStringLiteral("/userdefaults.json");
    }

    /// What a next run would find.
    static QJsonObject onDisk()
    {
        EXPECT_TRUE(records::savedLogin().synchronize());
        return QJsonDocument::fromJson(contentsOf(settingsPath()).value_or(QByteArray())).object();
    }

    static QJsonObject saved(const QString& address, const QString& origin, const TokenKind& kind)
    {
        return {{QStringLiteral("jiraUrl"), address},
                {QStringLiteral("signInToken"), QJsonObject{{QStringLiteral("origin"), origin},
                                                            {QStringLiteral("user"), QLatin1String(kind.user)},
                                                            {QStringLiteral("token"), QLatin1String(kind.token)}}}};
    }
};

} // namespace tests
