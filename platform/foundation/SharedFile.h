#pragma once

#include "platform/foundation/Export.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace platform {

/// A small file that several processes of one user read and rewrite. A reader sees the old bytes or the new ones, never
/// a mixture, also after a power cut; only its user can read it (0600 in a 0700 folder). From any thread.
class TL_EXPORT SharedFile
{
public:
    explicit SharedFile(QString path);

    const QString& path() const { return m_path; }

    /// Nothing when there is no file or it cannot be read.
    std::optional<QByteArray> read() const;

    /// True when the file may hold other bytes than when this was last asked or the file was last rewritten by this
    /// object.
    bool hasChanged();

    /// Replaces the file by what `change` makes of its present bytes, while no other process does. False when the disk
    /// refuses; the file is then as it was and the reason stands in the log.
    bool rewrite(const std::function<QByteArray(const std::optional<QByteArray>&)>& change);

    /// Renames the file so that it is neither read nor overwritten again, and says so in the log.
    void setAside() const;

private:
    QString m_path;
    qint64 m_seenSize = -1;
    qint64 m_seenTime = -1;
};

} // namespace platform
