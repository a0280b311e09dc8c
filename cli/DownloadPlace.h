#pragma once

#include "platform/foundation/files/ScratchFolder.h"

#include <functional>
#include <memory>

namespace cli {

/// Where an attachment of this name goes: `to` as a file, or into it where it is a folder or ends with a slash;
/// otherwise the current folder. The result is absolute.
QString downloadDestination(const std::optional<QString>& to, const QString& attachmentName);

/// The way of a download to its place. It is received in one folder of its own, which shares its file system with the
/// transport's own file, and goes over another one beside the destination, so that it appears under its name complete
/// or not at all. Whatever stands at the destination stays.
class DownloadPlace
{
public:
    using Completion = std::function<void(const std::optional<tljira::Error>&)>;

    explicit DownloadPlace(const QString& destination);

    /// Removes from `folder` what killed processes left of such ways more than a day ago.
    static void removeLeftovers(const QString& folder);

    /// Finds out what would prevent the file from getting to its place, as far as that can be known beforehand.
    std::optional<tljira::Error> prepare();

    /// Where the client shall save the file. Nobody else's file can lie there.
    QString receivingPath() const { return m_receiving.pathOf(m_name); }

    /// Copies where it has to, in a thread of its own, and calls back on the main thread, unless this is gone by then.
    void settle(const Completion& completion);

private:
    std::optional<tljira::Error> publish() const;
    tljira::Error withoutFolderBeside(const tljira::Error& error) const;

    const QString m_destination;
    const QString m_name;
    tljira::ScratchFolder m_receiving;
    tljira::ScratchFolder m_beside;
    /// Expires with this.
    std::shared_ptr<const bool> m_life = std::make_shared<bool>(true);
};

} // namespace cli
