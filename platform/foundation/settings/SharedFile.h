#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <optional>

namespace tljira {

namespace os {
class FileLock;
}

/// A small file that several processes of one user read and rewrite. A reader sees the old bytes or the new ones, never
/// a mixture, also after a power cut or on a full disk; only its user can read it (0600, in a folder that is made with
/// 0700). An empty file beside it, with ".lock" behind the name, is what processes lock, and stays. From any thread.
class SharedFile
{
public:
    /// What the file is to hold instead of its present bytes; nothing to leave it as it is.
    using Change = std::function<std::optional<QByteArray>(const std::optional<QByteArray>& present)>;

    explicit SharedFile(QString path);

    const QString& path() const { return m_path; }

    /// Nothing when there is no file or it cannot be read.
    std::optional<QByteArray> read() const;

    /// Whether there is no file. One that cannot be looked at may be there.
    bool isAbsent() const;

    /// True when the file may hold other bytes than when this was last asked or the file was last rewritten by this
    /// object. A file that has just been written is doubted a little longer than its time stamps are coarse.
    bool hasChanged();
    /// What was last seen could not be read: it is to be looked at again.
    void doubt();

    /// Replaces the file by what `change` makes of its present bytes, while no other process does; does not touch it
    /// when they are the same. Waits for another process no longer than `patience`. Nothing when all went well, and
    /// otherwise why not: the file is then as it was, and the reason stands in the log.
    std::optional<QString> rewrite(const Change& change, std::chrono::milliseconds patience);

    /// Whether a rewrite waits for another process at this moment.
    bool isWaiting() const { return m_isWaiting; }
    /// Makes a rewrite that waits for another process fail, now and later on.
    void stopWaiting() { m_mayWait = false; }

    /// What `rewrite` says when another process has the file.
    static QString reasonWhenLocked();
    /// What it says when there is a file that cannot be read.
    static QString reasonWhenUnread();

    /// Renames the file so that it is neither read nor overwritten again, and says so in the log. Call it from within
    /// `change`, where no other process can have mended the file in the meantime. False when it could not be renamed.
    bool setAside() const;

    /// Removes what rewrites that were killed more than a day ago left beside the file.
    void removeLeftovers() const;

private:
    struct Stamp
    {
        qint64 size = -1;
        qint64 time = 0;
        bool isSettled = false;
    };

    Stamp stamp() const;
    std::optional<QString> acquire(os::FileLock& lock, std::chrono::milliseconds patience);
    std::optional<QString> rewriteLocked(const Change& change, std::chrono::milliseconds patience);

    QString m_path;
    std::mutex m_mutex;
    Stamp m_seen;
    std::atomic<bool> m_isWaiting = false;
    std::atomic<bool> m_mayWait = true;
};

} // namespace tljira
