#include "platform/foundation/settings/KeyGroup.h"

#include <algorithm>

namespace tljira {

namespace {

/// Takes a key over, or its absence.
void copyKey(const QString& key, const QJsonObject& from, QJsonObject& to)
{
    if (from.contains(key))
        to.insert(key, from.value(key));
    else
        to.remove(key);
}

} // namespace

KeyGroup::KeyGroup(const QString& place, const QStringList& members, IsSamePlace isSamePlace)
    : m_place(place)
    , m_members(members)
    , m_isSamePlace(isSamePlace)
{
}

bool KeyGroup::isSame(const QJsonValue& one, const QJsonValue& other) const
{
    if (one.isUndefined() || other.isUndefined())
        return one.isUndefined() && other.isUndefined();
    return one == other || (m_isSamePlace && m_isSamePlace(one, other));
}

void KeyGroup::noteTakenUp(const QJsonObject& values)
{
    m_owner = values.value(m_place);
}

void KeyGroup::noteSet(const QString& key, const QJsonObject& values)
{
    if (isMember(key))
        m_owner = values.value(m_place);
}

bool KeyGroup::ownsMembersOf(const QJsonObject& mine) const
{
    return !mine.contains(m_place) || isSame(m_owner, mine.value(m_place));
}

QJsonObject KeyGroup::withMembersOf(QJsonObject values, const QJsonObject& source) const
{
    for (const QString& member : m_members)
        copyKey(member, source, values);
    return values;
}

bool KeyGroup::takesUp(const QJsonObject& inFile, const QJsonObject& mine, const QJsonObject& unsaved) const
{
    const auto isIn = [](const QJsonObject& values) {
        return [&values](const QString& key) { return values.contains(key); };
    };
    if (unsaved.contains(m_place) || std::any_of(m_members.begin(), m_members.end(), isIn(unsaved)))
        return false;
    if (!mine.contains(m_place))
        return true;
    // Members of another place than the present one are in memory alone, on purpose.
    return isSame(inFile.value(m_place), mine.value(m_place)) &&
           (ownsMembersOf(mine) || std::any_of(m_members.begin(), m_members.end(), isIn(inFile)));
}

QJsonObject KeyGroup::seen(const QJsonObject& inFile, const QJsonObject& mine, const QJsonObject& unsaved) const
{
    if (m_place.isEmpty() || takesUp(inFile, mine, unsaved))
        return inFile;
    QJsonObject values = withMembersOf(inFile, mine);
    copyKey(m_place, mine, values);
    return values;
}

QJsonObject KeyGroup::written(const QJsonObject& inFile, const QJsonObject& mine, const QJsonObject& unsaved) const
{
    const bool changesMembers = std::any_of(m_members.begin(), m_members.end(),
                                            [&](const QString& member) { return unsaved.contains(member); });
    if (m_place.isEmpty() || (!changesMembers && !unsaved.contains(m_place)))
        return inFile;
    QJsonObject values = inFile;
    copyKey(m_place, mine, values);
    if (changesMembers && ownsMembersOf(mine))
        return withMembersOf(values, mine);
    if (isSame(inFile.value(m_place), mine.value(m_place)))
        return values;
    return withMembersOf(values, ownsMembersOf(mine) ? mine : QJsonObject());
}

} // namespace tljira
