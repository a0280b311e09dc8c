#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <mutex>
#include <optional>

namespace tljira {

/// A small file that several processes of one user read and rewrite. A reader sees the old bytes or the new ones, never
/// a mixture, also after a power cut; only its user can read it (0600, in a folder that is made with 0700). From any
/// thread.
class SharedFile
{
public:
    using Change = std::function<QByteArray(const std::optional<QByteArray>&)>;

    explicit SharedFile(QString path);

    const QString& path() const { return m_path; }

    /// Nothing when there is no file or it cannot be read.
    std::optional<QByteArray> read() const;

    /// True when the file may hold other bytes than when this was last asked or the file was last rewritten by this
    /// object. A file that has just been written is doubted a little longer than its time stamps are coarse.
    bool hasChanged();

    /// Replaces the file by what `change` makes of its present bytes, while no other process does. False when the disk
    /// refuses; the file is then as it was and the reason stands in the log.
    bool rewrite(const Change& change);

    /// Renames the file so that it is neither read nor overwritten again, and says so in the log. Call it from within
    /// `change`, where no other process can have mended the file in the meantime. False when it could not be renamed.
    bool setAside() const;

private:
    struct Stamp
    {
        qint64 size = -1;
        qint64 time = 0;
        bool isSettled = false;
    };

    Stamp stamp() const;
    QString rewriteLocked(const Change& change);

    QString m_path;
    std::mutex m_mutex;
    Stamp m_seen;
};

} // namespace tljira
