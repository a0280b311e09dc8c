#include "platform/foundation/settings/Keyring.h"

#include <QJsonObject>
#include <QtGlobal>

namespace tljira {

namespace {

constexpr QLatin1String sentenceKey("sentence");
constexpr QLatin1String detailKey("detail");

// Marked for the windows, which show them in the user's language.

const char* textOf(Keyring::Problem problem)
{
    switch (problem) {
    case Keyring::Problem::NotBuiltIn:
        return QT_TRANSLATE_NOOP("Keyring", "This program was built without support for the desktop’s keyring.");
    case Keyring::Problem::WrongEventLoop:
        return QT_TRANSLATE_NOOP("Keyring",
                                 "The desktop’s keyring cannot be used with the event loop of this program.");
    case Keyring::Problem::Unreachable:
        return QT_TRANSLATE_NOOP("Keyring", "The desktop’s keyring cannot be reached. Is one running?");
    case Keyring::Problem::Locked:
        return QT_TRANSLATE_NOOP("Keyring", "The desktop’s keyring is locked. Unlock it and try again.");
    case Keyring::Problem::NotFound:
        return QT_TRANSLATE_NOOP("Keyring", "The desktop’s keyring is locked, or your login is no longer in it.");
    case Keyring::Problem::NotRemoved:
        return QT_TRANSLATE_NOOP("Keyring",
                                 "Your login is still in the desktop’s keyring. Is that running and unlocked?");
    case Keyring::Problem::NotLoaded:
        return QT_TRANSLATE_NOOP("Keyring", "The part of this program that reaches the desktop’s keyring is missing "
                                            "or cannot be loaded.");
    }
    return "";
}

QString valueOf(const Error& error, const QString& key)
{
    return error.userInfo ? error.userInfo->toObject().value(key).toString() : QString();
}

} // namespace

Error Keyring::makeError(Problem problem, const QString& detail)
{
    const QString sentence = QString::fromUtf8(textOf(problem));
    const QString description = detail.isEmpty() ? sentence : QStringLiteral("%1 (%2)").arg(sentence, detail);
    return Error{QLatin1String(errorDomain), static_cast<qint64>(problem),
                 QJsonObject{{QLatin1String(Error::localizedDescriptionKey), description},
                             {sentenceKey, sentence},
                             {detailKey, detail}}};
}

QString Keyring::sentenceOf(const Error& error)
{
    return valueOf(error, sentenceKey);
}

QString Keyring::detailOf(const Error& error)
{
    return valueOf(error, detailKey);
}

} // namespace tljira
