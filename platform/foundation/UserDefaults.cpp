#include "platform/foundation/UserDefaults.h"

#include "platform/foundation/FileManager.h"
#include "platform/foundation/Format.h"
#include "platform/foundation/JSON.h"

#include <QStandardPaths>

#include <algorithm>
#include <array>

namespace tljira {

namespace {

/// Nothing when the bytes are not those of a store.
std::optional<QJsonObject> decodeStore(const QByteArray& bytes)
{
    const std::optional<QJsonValue> value = decodeJSON(bytes);
    return value && value->isObject() ? std::optional(value->toObject()) : std::nullopt;
}

void apply(const QJsonObject& changes, QJsonObject& values)
{
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (change.value().isNull())
            values.remove(change.key());
        else
            values.insert(change.key(), change.value());
    }
}

} // namespace

UserDefaults& UserDefaults::standardUserDefaults()
{
    // Never destroyed: a value may be set while the process exits.
    static UserDefaults& defaults = *new UserDefaults(
        QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/userdefaults.json"));
    return defaults;
}

UserDefaults::UserDefaults(const QString& path)
    : m_file(path)
{
}

std::optional<QJsonValue> UserDefaults::objectForKey(const QString& key) const
{
    const std::lock_guard lock(m_mutex);
    refreshNowAndThen();
    const auto entry = m_values.constFind(key);
    return entry == m_values.constEnd() ? std::nullopt : std::optional<QJsonValue>(entry.value());
}

std::optional<QString> UserDefaults::stringForKey(const QString& key) const
{
    const std::optional<QJsonValue> value = objectForKey(key);
    return value && (value->isString() || value->isDouble()) ? std::optional(describe(*value)) : std::nullopt;
}

bool UserDefaults::boolForKey(const QString& key) const
{
    const QJsonValue value = objectForKey(key).value_or(QJsonValue());
    if (value.isDouble())
        return value.toDouble() != 0.0;
    static constexpr std::array affirmations = {QLatin1String("YES"), QLatin1String("true"), QLatin1String("1")};
    const QString text = value.toString();
    return value.toBool() || std::any_of(affirmations.begin(), affirmations.end(), [&](QLatin1String affirmation) {
               return text.compare(affirmation, Qt::CaseInsensitive) == 0;
           });
}

void UserDefaults::setObject(const std::optional<QJsonValue>& value, const QString& key)
{
    const std::lock_guard lock(m_mutex);
    m_unsaved.insert(key, value && !value->isUndefined() ? *value : QJsonValue(QJsonValue::Null));
    apply(m_unsaved, m_values);
    store();
}

bool UserDefaults::synchronize()
{
    const std::lock_guard lock(m_mutex);
    store();
    refresh();
    return m_unsaved.isEmpty();
}

/// Every request reads several values; what another process wrote within so short a time might as well have been
/// written after it.
void UserDefaults::refreshNowAndThen() const
{
    constexpr auto interval = std::chrono::milliseconds(10);
    const auto now = std::chrono::steady_clock::now();
    if (now - m_refreshTime < interval)
        return;
    refresh();
    m_refreshTime = now;
}

void UserDefaults::refresh() const
{
    if (!m_file.hasChanged())
        return;
    const std::optional<QByteArray> bytes = m_file.read();
    if (!bytes && FileManager::fileExistsAtPath(m_file.path()))
        return;
    std::optional<QJsonObject> values = bytes ? decodeStore(*bytes) : QJsonObject();
    if (!values)
        m_file.rewrite(
            [&](const std::optional<QByteArray>& present) { return encodeJSON(*(values = usableValues(present))); });
    m_values = values.value_or(QJsonObject());
    apply(m_unsaved, m_values);
}

/// What the file holds, as asked inside a rewrite. Sets aside what cannot be understood.
QJsonObject UserDefaults::usableValues(const std::optional<QByteArray>& present) const
{
    const std::optional<QJsonObject> values = present ? decodeStore(*present) : QJsonObject();
    if (!values)
        m_file.setAside();
    return values.value_or(QJsonObject());
}

/// Keeps `m_unsaved` for the next attempt when the disk refuses.
void UserDefaults::store()
{
    if (m_unsaved.isEmpty())
        return;
    QJsonObject merged;
    const bool isStored = m_file.rewrite([&](const std::optional<QByteArray>& present) {
        merged = usableValues(present);
        apply(m_unsaved, merged);
        return encodeJSON(merged);
    });
    if (isStored) {
        m_values = merged;
        m_unsaved = {};
    }
}

} // namespace tljira
