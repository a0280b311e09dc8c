#pragma once

#include <QJsonObject>
#include <QStringList>

namespace tljira {

/// Keys of a store that mean something together only: one that names a place, and members that belong to the place
/// named at the time when they were set. Decides what of them is written beside what other processes wrote, so that the
/// file never holds members of one place beside the name of another.
class KeyGroup
{
public:
    using IsSamePlace = bool (*)(const QJsonValue& one, const QJsonValue& other);

    KeyGroup() = default;
    KeyGroup(const QString& place, const QStringList& members, IsSamePlace isSamePlace);

    bool isPlace(const QString& key) const { return !m_place.isEmpty() && key == m_place; }
    bool isMember(const QString& key) const { return m_members.contains(key); }

    /// Whether the members in `mine` belong to the place in it. Without a place they cannot be brought to a wrong one.
    bool ownsMembersOf(const QJsonObject& mine) const;

    /// `values` are those of the file: its members belong to its place.
    void noteTakenUp(const QJsonObject& values);
    /// One of `values` was set.
    void noteSet(const QString& key, const QJsonObject& values);
    /// The members belong to this place, whatever is set under the place's key.
    void noteOwner(const QJsonValue& place) { m_owner = place; }

    /// `inFile`, with these keys as the process goes on seeing them: as they are in `mine`, unless the file names the
    /// same place or the process none.
    QJsonObject seen(const QJsonObject& inFile, const QJsonObject& mine, const QJsonObject& unsaved) const;
    /// Whether `seen` takes these keys from the file.
    bool takesUp(const QJsonObject& inFile, const QJsonObject& mine, const QJsonObject& unsaved) const;
    /// `inFile`, with these keys as they have to be written; those that do not belong here are left to the caller.
    QJsonObject written(const QJsonObject& inFile, const QJsonObject& mine, const QJsonObject& unsaved) const;

private:
    bool isSame(const QJsonValue& one, const QJsonValue& other) const;
    QJsonObject withMembersOf(QJsonObject values, const QJsonObject& source) const;

    QString m_place;
    QStringList m_members;
    IsSamePlace m_isSamePlace = nullptr;
    QJsonValue m_owner = QJsonValue::Undefined;
};

} // namespace tljira
