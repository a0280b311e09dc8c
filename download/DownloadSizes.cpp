#include "download/DownloadSizes.h"

#include "platform/foundation/values/Format.h"
#include "platform/toolkit/nib/InterfaceTexts.h"

namespace {

double megabytes(qint64 bytes)
{
    return static_cast<double>(bytes) / 1024.0 / 1024.0;
}

QString translated(const char* source)
{
    return tljira::InterfaceTexts::shared().text("JAListAttachedFilesWindow", source);
}

} // namespace

QString megabytesText(qint64 bytes)
{
    return tljira::format(QStringLiteral("%0.2f MB"), megabytes(bytes));
}

QString arrivedText(qint64 bytes, qint64 size)
{
    const QString arrived = tljira::format(QStringLiteral("%0.1f"), megabytes(bytes));
    if (size <= 0 || bytes > size)
        return arrived + QStringLiteral(" MB");
    return translated(QT_TRANSLATE_NOOP("JAListAttachedFilesWindow", "%1 of %2")).arg(arrived, megabytesText(size));
}
