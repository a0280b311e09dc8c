#include "download/DownloadFileName.h"

#include "platform/foundation/files/PathString.h"
#include "records/TLJiraOptions.h"

#include <algorithm>

namespace {

using Kinds = std::vector<TLJiraOptions::DocumentKind>;

QString withExtension(const QString& name, const Kinds& kinds)
{
    const QString extension = tljira::pathExtension(name);
    const auto packet = std::find_if(kinds.begin(), kinds.end(), [&](const auto& kind) {
        return !extension.isEmpty() && kind.packetExtension == extension;
    });
    if (packet != kinds.end())
        return tljira::appendingPathExtension(tljira::deletingPathExtension(name), packet->extension);
    const bool hasOne =
        std::any_of(kinds.begin(), kinds.end(), [&](const auto& kind) { return kind.extension == extension; });
    // The default kind is appended to names that end in it, too.
    const bool keepsName = kinds.empty() || (hasOne && kinds != TLJiraOptions::defaultDocuments());
    return keepsName ? name : tljira::appendingPathExtension(name, kinds.front().extension);
}

} // namespace

QString downloadFileName(const std::optional<QString>& attachmentName)
{
    const QString name = tljira::fileNameFromUntrustedText(attachmentName.value_or(QString()));
    // The extension may have made a name too long that was just short enough.
    return tljira::fileNameFromUntrustedText(withExtension(name, TLJiraOptions::inUse().documents));
}
