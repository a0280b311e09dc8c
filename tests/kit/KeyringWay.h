#pragma once

#include "tests/kit/DesktopKeyring.h"
#include "tests/kit/SignInWay.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace tests {

/// A way to sign in, as the parameter of tests that speak of the keyring.
using KeyringWay = SignInWay;

inline std::vector<KeyringWay> keyringWays()
{
    return signInWays();
}

/// What in the entry of an application is worth stealing: a session's value or a token. Empty for none.
inline QByteArray secretInKeyring(const QString& application)
{
    const QJsonObject entry = QJsonDocument::fromJson(DesktopKeyring::textOf(application)).object();
    const QString token =
        entry.value(QStringLiteral("signInToken")).toObject().value(QStringLiteral("token")).toString();
    return (token.isEmpty() ? entry.value(QStringLiteral("kSessionValue")).toString() : token).toUtf8();
}

} // namespace tests
