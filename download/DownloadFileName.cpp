#include "download/DownloadFileName.h"

#include "constants/DocumentExtension.h"
#include "platform/foundation/files/PathString.h"

QString downloadFileName(const std::optional<QString>& attachmentName)
{
    QString name = tljira::fileNameFromUntrustedText(attachmentName.value_or(QString()));
    if (tljira::pathExtension(name) == documentPacketExtension)
        name = tljira::deletingPathExtension(name);
    // The extension may have made a name too long that was just short enough.
    return tljira::fileNameFromUntrustedText(tljira::appendingPathExtension(name, documentExtension));
}
