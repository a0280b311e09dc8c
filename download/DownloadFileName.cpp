#include "download/DownloadFileName.h"

#include "platform/foundation/PathString.h"

QString downloadFileName(const std::optional<QString>& attachmentName)
{
    QString name = platform::fileNameFromUntrustedText(attachmentName.value_or(QString()));
    if (platform::pathExtension(name) == QLatin1String("tessaloompacket"))
        name = platform::deletingPathExtension(name);
    // The extension may have made a name too long that was just short enough.
    return platform::fileNameFromUntrustedText(platform::appendingPathExtension(name, QStringLiteral("tessaloom")));
}
