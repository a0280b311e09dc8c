#include "download/DownloadFolder.h"

#include "constants/JAConstants.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/PathString.h"
#include "platform/foundation/TemporaryDirectory.h"

namespace {

std::optional<QString> descriptionOf(const std::optional<platform::Error>& error)
{
    return error ? std::optional(error->localizedDescription()) : std::nullopt;
}

} // namespace

QString DownloadFolder::path()
{
    return platform::appendingPathComponent(platform::temporaryDirectory(), kPrefixDirectory);
}

void DownloadFolder::makeAnew(const QString& path)
{
    const auto removeError = platform::FileManager::removeItemAtPath(path);
    platform::log(u"tmp directory: %@", path);
    platform::log(u"removeItemAtPath error : %@", descriptionOf(removeError));
    const auto createError = platform::FileManager::createDirectoryAtPath(path, true);
    platform::log(u"createDirectoryAtPath error : %@", descriptionOf(createError));
}
