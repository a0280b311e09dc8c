#include "platform/foundation/settings/UserDefaults.h"

#include "platform/foundation/Log.h"
#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/values/Format.h"
#include "platform/foundation/values/JSON.h"

#include <QStandardPaths>

#include <algorithm>
#include <array>

namespace tljira {

namespace {

/// Nobody waits for the thread that waits so long.
constexpr auto PatienceWithOthers = std::chrono::seconds(10);
/// How long a reader waits for news from the disk. A window shows a new picture twice in that time.
constexpr auto PatienceWithDisk = std::chrono::milliseconds(8);

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

QJsonObject without(const QStringList& keys, QJsonObject values)
{
    for (const QString& key : keys)
        values.remove(key);
    return values;
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
    , m_writer({[this](bool mustWrite) { work(mustWrite); }, [this] { return m_file.isWaiting(); },
                [this] { m_file.stopWaiting(); }})
{
}

std::optional<QJsonValue> UserDefaults::objectForKey(const QString& key) const
{
    const QJsonObject values = dictionaryRepresentation();
    const auto entry = values.constFind(key);
    return entry == values.constEnd() ? std::nullopt : std::optional<QJsonValue>(entry.value());
}

QJsonObject UserDefaults::dictionaryRepresentation() const
{
    refreshNowAndThen();
    const std::lock_guard lock(m_mutex);
    if (m_memoryKeys.isEmpty())
        return m_values;
    QJsonObject values = without(m_memoryKeys, m_values);
    apply(m_inMemory, values);
    return values;
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
    const QJsonValue wanted = value && !value->isUndefined() ? *value : QJsonValue(QJsonValue::Null);
    const auto holds = [&](const QJsonObject& values) {
        return wanted.isNull() ? !values.contains(key) : values.value(key) == wanted;
    };
    {
        const std::lock_guard lock(m_mutex);
        load();
        if (m_memoryKeys.contains(key)) {
            apply({{key, wanted}}, m_inMemory);
            return;
        }
        // A member that is as it was needs no saving, whatever another process has saved since for its own place. What
        // belongs to another place, or to none, does: from now on it is this one's.
        const bool isPresentMember = m_group.isMember(key) && !wanted.isNull();
        const bool isOwn = m_group.isMember(key) && m_group.ownsMembersOf(m_values);
        const bool isKnown = holds(m_inFile) || m_unsaved.contains(key);
        if (holds(m_values) && (isOwn || (isKnown && !isPresentMember)))
            return;
        m_unsaved.insert(key, wanted);
        apply(m_unsaved, m_values);
        m_group.noteSet(key, m_values);
    }
    m_writer.ask();
}

bool UserDefaults::synchronize()
{
    const bool isTried = m_writer.finish();
    const std::lock_guard lock(m_mutex);
    if (!isTried) {
        m_failure = SharedFile::reasonWhenLocked();
        log(u"%@ could not be written yet: %@", m_file.path(), *m_failure);
    }
    return !m_failure && (m_holds == 0 || m_unsaved.isEmpty());
}

std::optional<QString> UserDefaults::failure() const
{
    const std::lock_guard lock(m_mutex);
    return m_isUnread && !m_failure ? SharedFile::reasonWhenUnread() : m_failure;
}

void UserDefaults::keepTogether(const QString& place, const QStringList& members, KeyGroup::IsSamePlace isSamePlace)
{
    const std::lock_guard lock(m_mutex);
    load();
    m_group = KeyGroup(place, members, isSamePlace);
    m_group.noteTakenUp(m_values);
}

void UserDefaults::setPlaceOfMembers(const QJsonValue& place)
{
    const std::lock_guard lock(m_mutex);
    m_group.noteOwner(place);
}

void UserDefaults::keepInMemory(const QStringList& keys)
{
    const std::lock_guard lock(m_mutex);
    m_memoryKeys = keys;
}

/// Every request reads several values; what another process wrote within so short a time might as well have been
/// written after it.
void UserDefaults::refreshNowAndThen() const
{
    constexpr auto interval = std::chrono::milliseconds(10);
    bool isFirst = false;
    {
        const std::lock_guard lock(m_mutex);
        isFirst = !m_isLoaded;
        load();
        const auto now = std::chrono::steady_clock::now();
        if (m_holds > 0 || now - m_refreshTime < interval || (isFirst && !m_isDamaged))
            return;
        m_refreshTime = now;
    }
    if (isFirst)
        m_writer.ask();
    else
        m_writer.look(PatienceWithDisk);
}

/// The first look, for which there is nothing to go by in the meantime.
void UserDefaults::load() const
{
    if (m_isLoaded)
        return;
    m_isLoaded = true;
    m_file.hasChanged();
    const std::optional<QJsonObject> values = readValues(m_isDamaged);
    noteReading(values.has_value());
    m_values = m_inFile = values.value_or(QJsonObject());
}

void UserDefaults::noteReading(bool isRead) const
{
    m_isUnread = !isRead;
    if (m_isUnread)
        m_file.doubt();
}

/// Nothing when there is a file that cannot be read at the moment; an empty store when there is none or it is damaged.
std::optional<QJsonObject> UserDefaults::readValues(bool& isDamaged) const
{
    const std::optional<QByteArray> bytes = m_file.read();
    if (!bytes)
        return m_file.isAbsent() ? std::optional(QJsonObject()) : std::nullopt;
    const std::optional<QJsonObject> values = decodeStore(*bytes);
    isDamaged = !values;
    return values.value_or(QJsonObject());
}

/// On the writer's thread.
void UserDefaults::work(bool mustWrite)
{
    if (mustWrite)
        store();
    refresh();
    if (!std::exchange(m_hasClearedAway, true))
        m_file.removeLeftovers();
}

void UserDefaults::refresh()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_holds > 0)
            return;
    }
    if (!m_file.hasChanged())
        return;
    bool isDamaged = false;
    const std::optional<QJsonObject> values = readValues(isDamaged);
    {
        const std::lock_guard lock(m_mutex);
        noteReading(values.has_value());
        if (!values)
            return;
        m_isDamaged = isDamaged;
        takeUp(*values);
    }
    if (isDamaged)
        store();
}

void UserDefaults::takeUp(const QJsonObject& inFile) const
{
    m_inFile = inFile;
    if (m_group.takesUp(inFile, m_values, m_unsaved))
        m_group.noteTakenUp(inFile);
    m_values = m_group.seen(inFile, m_values, m_unsaved);
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

QJsonObject UserDefaults::valuesToWrite(QJsonObject inFile, const QJsonObject& unsaved) const
{
    for (auto change = unsaved.begin(); change != unsaved.end(); ++change) {
        if (!m_group.isPlace(change.key()) && !m_group.isMember(change.key()))
            apply({{change.key(), change.value()}}, inFile);
    }
    return without(m_memoryKeys, m_group.written(inFile, m_values, unsaved));
}

/// On the writer's thread. Keeps `m_unsaved` for the next attempt when the disk refuses.
void UserDefaults::store()
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_holds > 0 || (m_unsaved.isEmpty() && !m_isDamaged))
            return;
    }
    QJsonObject written;
    QJsonObject taken;
    const auto change = [&](const std::optional<QByteArray>& present) -> std::optional<QByteArray> {
        const std::optional<QJsonObject> understood = present ? decodeStore(*present) : QJsonObject();
        written = usableValues(present);
        const std::lock_guard lock(m_mutex);
        // What was set while this waited for the lock goes along, and what was taken back stays out.
        if (m_holds == 0)
            taken = m_unsaved;
        m_isStoring = !taken.isEmpty();
        const QJsonObject inFile = std::exchange(written, valuesToWrite(written, taken));
        return understood && inFile == written ? std::nullopt : std::optional(encodeJSON(written));
    };
    const std::optional<QString> failure = m_file.rewrite(change, PatienceWithOthers);

    const std::lock_guard lock(m_mutex);
    m_isStoring = false;
    m_failure = failure;
    if (failure)
        return;
    m_isDamaged = false;
    for (auto stored = taken.begin(); stored != taken.end(); ++stored) {
        if (m_unsaved.value(stored.key()) == stored.value())
            m_unsaved.remove(stored.key());
    }
    if (m_holds == 0)
        takeUp(written);
}

UserDefaults::Hold::Hold(UserDefaults& defaults)
    : m_defaults(defaults)
{
    const std::lock_guard lock(m_defaults.m_mutex);
    m_defaults.load();
    ++m_defaults.m_holds;
    m_values = m_defaults.m_values;
    m_unsaved = m_defaults.m_unsaved;
    m_inMemory = m_defaults.m_inMemory;
    m_group = m_defaults.m_group;
}

UserDefaults::Hold::~Hold()
{
    if (m_isOver)
        return;
    release();
    m_defaults.m_writer.ask();
}

void UserDefaults::Hold::takeBack()
{
    if (m_isOver)
        return;
    {
        const std::lock_guard lock(m_defaults.m_mutex);
        restoreLocked();
    }
    release();
}

bool UserDefaults::Hold::writeNow()
{
    release();
    while (!m_defaults.synchronize()) {
        const auto failure = m_defaults.failure();
        const auto inFile = m_defaults.m_file.read();
        {
            const std::lock_guard lock(m_defaults.m_mutex);
            if (m_defaults.m_isStoring)
                continue;
            undoLocked(decodeStore(inFile.value_or(QByteArray())).value_or(QJsonObject()));
        }
        m_defaults.m_writer.finish();
        const std::lock_guard lock(m_defaults.m_mutex);
        m_defaults.m_failure = failure;
        return false;
    }
    return true;
}

/// A disk may refuse at a moment when the file has its new values already: the old ones are to be written then.
void UserDefaults::Hold::undoLocked(const QJsonObject& inFile)
{
    QJsonObject changed = m_defaults.m_inFile;
    apply(m_defaults.m_unsaved, changed);
    const QStringList tried = m_defaults.m_unsaved.keys();
    restoreLocked();
    if (inFile != changed)
        return;
    for (const QString& key : tried) {
        if (!m_unsaved.contains(key))
            m_defaults.m_unsaved.insert(key, m_values.contains(key) ? m_values.value(key) : QJsonValue());
    }
}

void UserDefaults::Hold::restoreLocked()
{
    m_defaults.m_values = m_values;
    m_defaults.m_unsaved = m_unsaved;
    m_defaults.m_inMemory = m_inMemory;
    m_defaults.m_group = m_group;
}

void UserDefaults::Hold::release()
{
    const std::lock_guard lock(m_defaults.m_mutex);
    --m_defaults.m_holds;
    m_isOver = true;
}

} // namespace tljira
