#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/SharedFile.h"

#include <QJsonObject>
#include <QJsonValue>

#include <chrono>
#include <mutex>
#include <optional>

namespace tljira {

/// The application's small settings, by key. A value that was set is visible at once to every reader in the process and
/// already on disk when the call returns. Processes of the same application share the store: each writes only the keys
/// it sets, and sees what the others wrote a hundredth of a second later at the latest. From any thread.
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

    /// Nothing as `value` removes the key, and so does JSON null.
    void setObject(const std::optional<QJsonValue>& value, const QString& key);
    void removeObjectForKey(const QString& key) { setObject(std::nullopt, key); }

    /// Writes what the disk refused earlier and takes up what other processes wrote. False when the disk still refuses;
    /// this process goes on with its own values then.
    bool synchronize();

private:
    void refreshNowAndThen() const;
    void refresh() const;
    QJsonObject usableValues(const std::optional<QByteArray>& present) const;
    void store();

    mutable std::mutex m_mutex;
    mutable SharedFile m_file;
    mutable std::chrono::steady_clock::time_point m_refreshTime;
    mutable QJsonObject m_values;
    /// What the disk does not have yet; null stands for a key to remove.
    QJsonObject m_unsaved;
};

} // namespace tljira
