#pragma once

#include "platform/foundation/os/FileLock.h"
#include "platform/foundation/values/Error.h"

#include <QStringList>

#include <optional>

namespace cli {

/// A folder of the tool's own, which goes with everything in it when this does.
class PrivateFolder
{
public:
    PrivateFolder() = default;
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    /// Removes from `parent` those that killed processes left more than a day ago.
    static void removeLeftovers(const QString& parent);

    /// Makes it under a new, hidden name in `parent`.
    std::optional<tljira::Error> create(const QString& parent);

    /// Of an item in the folder.
    QString pathOf(const QString& name) const;

private:
    QString m_path;
    /// What may lie in it.
    mutable QStringList m_names;
    /// Tells other processes that the folder has an owner.
    tljira::os::FileLock m_sign;
};

} // namespace cli
