#include "records/SavedToken.h"

#include "records/JALoginObject.h"
#include "records/SavedLogin.h"

namespace records {

namespace {

constexpr QLatin1String originKey("origin");
constexpr QLatin1String userKey("user");
constexpr QLatin1String tokenKey("token");

} // namespace

std::optional<SavedToken> savedToken()
{
    const QJsonObject saved = savedLogin().objectForKey(savedTokenKey).value_or(QJsonValue()).toObject();
    const SavedToken token = {saved.value(originKey).toString(), saved.value(userKey).toString(),
                              saved.value(tokenKey).toString()};
    return token.origin.isEmpty() || token.token.isEmpty() ? std::nullopt : std::optional(token);
}

QJsonObject valueOf(const SavedToken& token)
{
    return {{originKey, token.origin}, {userKey, token.user}, {tokenKey, token.token}};
}

void saveToken(const SavedToken& token)
{
    const tljira::UserDefaults::Hold inOnePiece(savedLogin());
    JALoginObject::resetSession();
    savedLogin().setObject(valueOf(token), savedTokenKey);
    forgetKeyring();
}

void forgetToken()
{
    savedLogin().removeObjectForKey(savedTokenKey);
}

void forgetKeyring()
{
    if (!usesKeyring())
        savedLogin().removeObjectForKey(savedInKeyringKey);
}

} // namespace records
