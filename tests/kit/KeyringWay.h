#pragma once

#include "tests/kit/DesktopKeyring.h"
#include "tests/kit/Files.h"
#include "tests/kit/Jira.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <ostream>

namespace tests {

/// A way to sign in, as the parameter of tests that speak of the keyring.
struct KeyringWay
{
    const char* name;
    bool isByToken;
    /// Empty for a personal access token.
    const char* user;
    const char* secret;
};

inline std::ostream& operator<<(std::ostream& out, const KeyringWay& way)
{
    return out << way.name;
}

inline std::vector<KeyringWay> keyringWays()
{
    return {{"password", false, Jira::user, Jira::password},
            {"apiToken", true, Jira::email, Jira::apiToken},
            {"accessToken", true, "", Jira::accessToken}};
}

/// What in the entry of an application is worth stealing: a session's value or a token. Empty for none.
inline QByteArray secretInKeyring(const QString& application)
{
    const QJsonObject entry = QJsonDocument::fromJson(DesktopKeyring::textOf(application)).object();
    const QString token =
        entry.value(QStringLiteral("signInToken")).toObject().value(QStringLiteral("token")).toString();
    return (token.isEmpty() ? entry.value(QStringLiteral("kSessionValue")).toString() : token).toUtf8();
}

/// Those of the files below the home of the test, at any depth, hidden or not, that have one of these in them.
inline QStringList filesWith(const QByteArrayList& secrets)
{
    QStringList found;
    QDirIterator entry(QFileInfo(qEnvironmentVariable("HOME")).path(), QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (entry.hasNext()) {
        const QByteArray bytes = contentsOf(entry.next()).value_or(QByteArray());
        for (const QByteArray& secret : secrets) {
            if (bytes.contains(secret))
                found.append(entry.filePath());
        }
    }
    return found;
}

} // namespace tests
