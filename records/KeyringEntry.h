#pragma once

#include "platform/foundation/Export.h"

#include <QJsonObject>
#include <QString>

#include <optional>

class JALoginObject;

namespace records {

struct SavedToken;

/// What the desktop's keyring holds of a login: what opens the door, and which door. The server's address beside it in
/// the settings may be another by the time when it is read.
struct KeyringEntry
{
    /// As it was typed.
    QString server;
    /// Of a session or of a token, by the keys of savedLogin().
    QJsonObject secrets;

    bool isToken() const;

    /// One line of JSON.
    QString text() const;
    /// Nothing for what is no entry.
    static std::optional<KeyringEntry> fromText(const QString& text);
};

///@{
/// What an entry is to hold; nothing for an answer of a server that opened no session.
QJsonObject secretsOf(const JALoginObject& session);
QJsonObject secretsOf(const SavedToken& token);
///@}

///@{
/// Those that requests carry, as long as the keyring is where they are kept.
TL_EXPORT QJsonObject secretsInMemory();
void setSecretsInMemory(const QJsonObject& secrets);
///@}

} // namespace records
