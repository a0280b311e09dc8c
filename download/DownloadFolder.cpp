#include "download/DownloadFolder.h"

#include "constants/JAConstants.h"
#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/files/TemporaryDirectory.h"

#include <QFile>
#include <QFileInfo>

#include <memory>
#include <vector>

namespace {

std::optional<QString> descriptionOf(const std::optional<tljira::Error>& error)
{
    return error ? std::optional(error->localizedDescription()) : std::nullopt;
}

/// While it lives, the files below a folder keep their bytes, also when they are removed. A large file takes the time
/// of many frames to give its bytes back, so that happens on another thread, when this goes.
class HeldFiles
{
public:
    explicit HeldFiles(const QString& folder)
    {
        for (const QString& name : tljira::FileManager::filesBelowPath(folder)) {
            const QString path = tljira::appendingPathComponent(folder, name);
            const QFileInfo info(path);
            if (!info.isFile() || info.isSymLink())
                continue;
            m_files->push_back(std::make_unique<QFile>(path));
            m_files->back()->open(QIODevice::ReadOnly);
        }
    }

    ~HeldFiles()
    {
        if (!m_files->empty())
            tljira::GlobalQueue::instance().addOperation([files = std::move(m_files)] { files->clear(); });
    }

    HeldFiles(const HeldFiles&) = delete;
    HeldFiles& operator=(const HeldFiles&) = delete;

private:
    using Files = std::vector<std::unique_ptr<QFile>>;
    std::shared_ptr<Files> m_files = std::make_shared<Files>();
};

} // namespace

QString DownloadFolder::path()
{
    return tljira::appendingPathComponent(tljira::temporaryDirectory(), kPrefixDirectory);
}

void DownloadFolder::makeAnew(const QString& path)
{
    // A link to a folder is removed itself: what it points to is nobody's business here.
    const HeldFiles held(QFileInfo(path).isSymLink() ? QString() : path);
    const auto removeError = tljira::FileManager::removeItemAtPath(path);
    tljira::log(u"tmp directory: %@", path);
    tljira::log(u"removeItemAtPath error : %@", descriptionOf(removeError));
    const auto createError = tljira::FileManager::createDirectoryAtPath(path, true);
    tljira::log(u"createDirectoryAtPath error : %@", descriptionOf(createError));
}
