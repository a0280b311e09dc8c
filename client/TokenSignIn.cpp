#include "client/TokenSignIn.h"

#include "client/JAController.h"
#include "records/ServerAddress.h"

#include <algorithm>

namespace client {

namespace {

constexpr qint64 ok = 200;
constexpr qint64 unauthorized = 401;
constexpr qint64 forbidden = 403;

std::optional<QString> originOf(const std::optional<QString>& url)
{
    return url ? records::originOf(*url) : std::nullopt;
}

// Marked for the windows, which show them in the user's language.

tljira::Error tokenError(TokenProblem problem, const char* text)
{
    return tljira::makeError(QString::fromLatin1(tokenDomain), static_cast<qint64>(problem), QString::fromUtf8(text));
}

constexpr const char* textOfDetour =
    QT_TRANSLATE_NOOP("TokenSignIn", "This address leads on to another one, and the token was not sent there. Type the "
                                     "server’s own address.");

/// Null for a status that has nothing to do with tokens.
const char* textOfRefusal(qint64 status, bool hasUser)
{
    switch (status) {
    case ok:
        return QT_TRANSLATE_NOOP("TokenSignIn", "What answers at this address is not Jira.");
    case unauthorized:
        return QT_TRANSLATE_NOOP("TokenSignIn", "The server does not accept this token.");
    case forbidden:
        return hasUser ? QT_TRANSLATE_NOOP("TokenSignIn", "The server denies access with this token.")
                       : QT_TRANSLATE_NOOP("TokenSignIn", "The server denies access with this token alone. Jira Cloud "
                                                          "wants your e-mail address with it.");
    default:
        return nullptr;
    }
}

tljira::Error refusal(qint64 status, const QJsonValue& json, const char* text)
{
    QJsonObject answer = json.toObject();
    answer.insert(QLatin1String(tljira::Error::localizedDescriptionKey), QString::fromUtf8(text));
    return unexpectedStatus(status, answer);
}

} // namespace

records::SavedToken offeredToken(const std::optional<QString>& user, const std::optional<QString>& token,
                                 const std::optional<QString>& url)
{
    return {originOf(url).value_or(QString()), user.value_or(QString()).trimmed(), token.value_or(QString()).trimmed()};
}

std::optional<tljira::Error> problemOfToken(const records::SavedToken& token)
{
    const auto isNoTokenCharacter = [](QChar c) { return c <= u' ' || c > u'~'; };
    if (token.token.isEmpty())
        return tokenError(TokenProblem::Missing, QT_TRANSLATE_NOOP("TokenSignIn", "No token was given."));
    if (std::any_of(token.token.begin(), token.token.end(), isNoTokenCharacter))
        return tokenError(TokenProblem::NoToken,
                          QT_TRANSLATE_NOOP("TokenSignIn", "This is no token: it has blanks, line breaks or other "
                                                           "characters that no token has."));
    const auto isNoUserCharacter = [](QChar c) { return c == u':' || c.category() == QChar::Other_Control; };
    if (std::any_of(token.user.begin(), token.user.end(), isNoUserCharacter))
        return tokenError(
            TokenProblem::NoUser,
            QT_TRANSLATE_NOOP("TokenSignIn", "A user name with a colon or a line break cannot be used with a token."));
    return std::nullopt;
}

QString authorizationOf(const records::SavedToken& token)
{
    if (token.user.isEmpty())
        return QStringLiteral("Bearer ") + token.token;
    const QString pair = token.user + u':' + token.token;
    return QStringLiteral("Basic ") + QString::fromLatin1(pair.toUtf8().toBase64());
}

std::optional<QString> authorizationFor(const std::optional<QString>& url)
{
    const auto saved = records::savedToken();
    if (!saved || originOf(url) != saved->origin || problemOfToken(*saved))
        return std::nullopt;
    return authorizationOf(*saved);
}

bool namesAccount(const records::SavedToken& token, const Answer& answer,
                  const std::optional<tljira::HTTPURLResponse>& response)
{
    return answer.kind == Answer::Kind::Accepted && answer.json && answer.json->isObject() && response &&
           records::originOf(response->url) == token.origin;
}

tljira::Error refusedToken(const records::SavedToken& token, const Answer& answer,
                           const std::optional<tljira::HTTPURLResponse>& response)
{
    const qint64 status = statusOf(response);
    const bool isFromElsewhere = response && !token.origin.isEmpty() && originOf(response->url) != token.origin;
    const char* const text = isFromElsewhere ? textOfDetour : textOfRefusal(status, !token.user.isEmpty());
    return text ? refusal(status, answer.json.value_or(QJsonValue()), text) : unexpectedStatus(status, answer.json);
}

tljira::Error noToken()
{
    return refusal(unauthorized, QJsonValue(), QT_TRANSLATE_NOOP("TokenSignIn", "No token is saved for this server."));
}

} // namespace client
