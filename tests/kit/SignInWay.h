#pragma once

#include "tests/kit/Files.h"
#include "tests/kit/Jira.h"

#include <QDirIterator>
#include <QFileInfo>

#include <ostream>
#include <string>
#include <vector>

namespace tests {

/// A way to sign in, as a test's parameter.
struct SignInWay
{
    const char* name;
    bool isByToken;
    /// Empty for a personal access token.
    const char* user;
    const char* secret;

    /// What requests say of it; empty for a password.
    std::string authorization() const
    {
        if (!isByToken)
            return {};
        return user[0] ? "Basic " + pair().toBase64().toStdString() : std::string("Bearer ") + secret;
    }
    /// All that would give a token away, were it to be read.
    QByteArrayList formsOfToken() const
    {
        if (!isByToken)
            return {};
        return {secret, QByteArray(secret).toBase64(), pair().toBase64()};
    }

private:
    QByteArray pair() const { return QByteArray(user) + ':' + secret; }
};

inline std::ostream& operator<<(std::ostream& out, const SignInWay& way)
{
    return out << way.name;
}

inline std::vector<SignInWay> signInWays()
{
    return {{"password", false, Jira::user, Jira::password},
            {"apiToken", true, Jira::email, Jira::apiToken},
            {"accessToken", true, "", Jira::accessToken}};
}

/// Those of the files below this folder, at any depth, hidden or not, that have one of these in them.
inline QStringList filesWith(const QByteArrayList& secrets, const QString& folder)
{
    QStringList found;
    QDirIterator entry(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (entry.hasNext()) {
        const QByteArray bytes = contentsOf(entry.next()).value_or(QByteArray());
        for (const QByteArray& secret : secrets) {
            if (bytes.contains(secret))
                found.append(entry.filePath());
        }
    }
    return found;
}

/// The same below the home of the test.
inline QStringList filesWith(const QByteArrayList& secrets)
{
    return filesWith(secrets, QFileInfo(qEnvironmentVariable("HOME")).path());
}

} // namespace tests
