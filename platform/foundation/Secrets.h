#pragma once

#include "platform/foundation/Export.h"

#include <QJsonValue>
#include <QString>

#include <memory>

/// Texts that others must not read: they are looked for in what may reach others, such as a line of the log or a
/// server's words about an error, in every spelling in which a server may give them back. Everything here may be called
/// on any thread.
namespace tljira {

enum class SecretKind {
    Token, ///< stands in no line of the log and in no error, whatever a host has chosen
    Login  ///< a password, a session, a cookie: stands in no line of a log that a host wants blanked
};

/// From now on `secret` is hidden. The newest are, as many as anybody uses at one time.
void hide(SecretKind kind, const QString& secret);
/// What an "Authorization" or "Proxy-Authorization" field says is hidden from now on, in the spelling of the field and
/// in plain text.
void hideAuthorization(const QString& value);
/// `secret` is hidden as long as what is returned lives, so that nobody remembers a password for longer than it is
/// needed.
[[nodiscard]] std::shared_ptr<const void> hideWhileHeld(SecretKind kind, const QString& secret);

/// The same text, or the same value at any depth, with "***" in place of every hidden token.
QString withoutTokens(const QString& text);
TL_EXPORT QJsonValue withoutTokens(const QJsonValue& value);

/// The same text with "***" in place of everything that is hidden, of passwords in addresses, and of what header fields
/// that carry credentials say.
QString withoutSecrets(const QString& text);

} // namespace tljira
