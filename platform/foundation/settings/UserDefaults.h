#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/settings/BackgroundWriter.h"
#include "platform/foundation/settings/KeyGroup.h"
#include "platform/foundation/settings/SharedFile.h"

#include <QJsonObject>
#include <QJsonValue>

#include <chrono>
#include <mutex>
#include <optional>

namespace tljira {

/// The application's small settings, by key. A value that was set is visible at once to every reader in the process and
/// soon on disk: a thread of the store's own writes it, at the latest when the process exits. Only the very first look
/// at the store and `synchronize` wait for the disk. Processes of the same application share the store: each writes
/// only the keys it sets, and sees what the others wrote a hundredth of a second later, or a little more on a slow
/// disk. What is unchanged is not written. From any thread.
///
/// The store is one JSON file of the application's configuration folder (XDG_CONFIG_HOME). A file that cannot be
/// understood is kept aside under another name and the store starts empty.
class TL_EXPORT UserDefaults
{
public:
    /// The application's own; its place is fixed at the first call.
    static UserDefaults& standardUserDefaults();

    explicit UserDefaults(const QString& path);

    std::optional<QJsonValue> objectForKey(const QString& key) const;
    /// Nothing for a value that is neither a text nor a number.
    std::optional<QString> stringForKey(const QString& key) const;
    /// True for true, for a number other than 0 and for the texts "YES", "true" and "1" in any case; otherwise, and
    /// when missing, false.
    bool boolForKey(const QString& key) const;
    /// All values as they are at one moment.
    QJsonObject dictionaryRepresentation() const;

    /// Nothing as `value` removes the key, and so does JSON null.
    void setObject(const std::optional<QJsonValue>& value, const QString& key);
    void removeObjectForKey(const QString& key) { setObject(std::nullopt, key); }

    /// Writes what is not on disk yet, waits for the disk, and takes up what other processes wrote. False when the disk
    /// refuses, or another process has kept the file for a second; this process goes on with its own values then, and
    /// `failure` says why.
    bool synchronize();
    /// Why the last attempt to write or to read failed; nothing when it did not.
    std::optional<QString> failure() const;

    /// From now on `members` belong to the place that is set under the key `place` at the time when they are set. They
    /// and the place reach the disk in one piece, and never members of one place beside the name of another: those that
    /// do not belong to the present place stay in memory. What other processes wrote under these keys is taken up only
    /// if it is of the same place, or this process has none.
    void keepTogether(const QString& place, const QStringList& members, KeyGroup::IsSamePlace isSamePlace);
    /// The members that were set last belong to this place, which need not be the present one.
    void setPlaceOfMembers(const QJsonValue& place);

    /// From now on the values of these keys are in memory alone. What is set under them never reaches the disk; what
    /// the file has under them is not seen, and goes when the file is written next.
    void keepInMemory(const QStringList& keys);

    /// While it lives, nothing that is set reaches the disk; when it ends, all of it does, in one piece.
    class TL_EXPORT Hold
    {
    public:
        explicit Hold(UserDefaults& defaults);
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

        /// Ends it with everything as it was when it began.
        void takeBack();
        /// Ends it and waits for the disk. False when that refuses (see `synchronize`); everything is then as it was
        /// when this began.
        bool writeNow();

    private:
        void undoLocked(const QJsonObject& inFile);
        void restoreLocked();
        void release();

        UserDefaults& m_defaults;
        bool m_isOver = false;
        QJsonObject m_values;
        QJsonObject m_unsaved;
        QJsonObject m_inMemory;
        KeyGroup m_group;
    };

private:
    void work(bool mustWrite);
    void refreshNowAndThen() const;
    void load() const;
    void noteReading(bool isRead) const;
    void refresh();
    void store();
    std::optional<QJsonObject> readValues(bool& isDamaged) const;
    QJsonObject usableValues(const std::optional<QByteArray>& present) const;
    QJsonObject valuesToWrite(QJsonObject inFile, const QJsonObject& unsaved) const;
    void takeUp(const QJsonObject& inFile) const;

    mutable std::mutex m_mutex;
    mutable SharedFile m_file;
    mutable bool m_isLoaded = false;
    mutable std::chrono::steady_clock::time_point m_refreshTime;
    mutable QJsonObject m_values;
    /// As this process last saw the file.
    mutable QJsonObject m_inFile;
    mutable bool m_isDamaged = false;
    /// There is a file, but it could not be read.
    mutable bool m_isUnread = false;
    /// What the disk does not have yet; null stands for a key to remove.
    QJsonObject m_unsaved;
    QStringList m_memoryKeys;
    /// The values of these.
    QJsonObject m_inMemory;
    mutable KeyGroup m_group;
    int m_holds = 0;
    /// What is unsaved is on its way to the disk, and cannot be taken back.
    bool m_isStoring = false;
    std::optional<QString> m_failure;
    bool m_hasClearedAway = false;
    /// Last: its thread uses all of the above.
    mutable BackgroundWriter m_writer;
};

} // namespace tljira
