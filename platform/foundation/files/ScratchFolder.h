#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/os/FileLock.h"
#include "platform/foundation/values/Error.h"

#include <QStringList>

#include <optional>

namespace tljira {

/// A folder for what is not ready yet. Only its user gets in, and it goes with everything in it when this does. A lock
/// tells other processes that it has an owner (see removeLeftovers).
class TL_EXPORT ScratchFolder
{
public:
    ScratchFolder() = default;
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// Makes it in `parent`, under this prefix and a text that nobody else has. Once for each object.
    std::optional<Error> create(const QString& parent, const QString& prefix);

    /// Gives it another prefix. Who clears away at once what nobody has locked must not find it before it is.
    std::optional<Error> rename(const QString& prefix);

    /// Of an item in the folder, which need not be there yet.
    QString pathOf(const QString& name) const;

private:
    QString m_parent;
    QString m_identifier;
    QString m_path;
    /// What may lie in it.
    mutable QStringList m_names;
    os::FileLock m_sign;
};

} // namespace tljira
