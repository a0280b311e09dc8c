#include "records/KeyringEntry.h"

#include "platform/foundation/values/JSON.h"
#include "records/JALoginObject.h"
#include "records/SavedLogin.h"
#include "records/SavedToken.h"

namespace records {

namespace {

constexpr QLatin1String serverKey("server");

QJsonObject secretsIn(const QJsonObject& values)
{
    QJsonObject secrets;
    for (const QString& key : secretKeys()) {
        if (values.contains(key))
            secrets.insert(key, values.value(key));
    }
    return secrets;
}

} // namespace

bool KeyringEntry::isToken() const
{
    return secrets.contains(savedTokenKey);
}

QString KeyringEntry::text() const
{
    QJsonObject values = secrets;
    values.insert(serverKey, server);
    return QString::fromUtf8(tljira::encodeJSON(values));
}

std::optional<KeyringEntry> KeyringEntry::fromText(const QString& text)
{
    const QJsonObject values = tljira::decodeJSON(text.toUtf8()).value_or(QJsonValue()).toObject();
    KeyringEntry entry{values.value(serverKey).toString(), secretsIn(values)};
    return entry.secrets.isEmpty() ? std::nullopt : std::optional(std::move(entry));
}

QJsonObject secretsOf(const JALoginObject& session)
{
    if (!session.sessionName() || !session.sessionValue())
        return {};
    return {{savedNameKey, *session.sessionName()}, {savedValueKey, *session.sessionValue()}};
}

QJsonObject secretsOf(const SavedToken& token)
{
    return {{savedTokenKey, valueOf(token)}};
}

QJsonObject secretsInMemory()
{
    return secretsIn(savedLogin().dictionaryRepresentation());
}

void setSecretsInMemory(const QJsonObject& secrets)
{
    const tljira::UserDefaults::Hold atOnce(savedLogin());
    for (const QString& key : secretKeys())
        savedLogin().setObject(secrets.contains(key) ? std::optional(secrets.value(key)) : std::nullopt, key);
}

} // namespace records
