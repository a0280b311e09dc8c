#pragma once

#include "platform/foundation/Export.h"

#include <QJsonObject>
#include <QString>

#include <optional>

namespace records {

/// The token of a login, which the user defaults keep with the server's address as they keep a session: see
/// savedLogin(). There is one or the other, never both.
struct SavedToken
{
    /// Where alone it may be sent to, as originOf() spells it.
    QString origin;
    /// Empty for a personal access token.
    QString user;
    QString token;
};

/// Nothing unless all of it is saved. From any thread.
TL_EXPORT std::optional<SavedToken> savedToken();
/// As it is saved.
QJsonObject valueOf(const SavedToken& token);
/// Takes the place of a session, and of an earlier token.
void saveToken(const SavedToken& token);
void forgetToken();
/// What is saved in the settings takes the place of what the keyring has.
void forgetKeyring();

} // namespace records
