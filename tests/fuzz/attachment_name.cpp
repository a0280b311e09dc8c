#include "cli/DownloadPlace.h"
#include "download/DownloadFileName.h"
#include "tests/fuzz/Fuzz.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

bool changesTheDirection(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

void requireFileName(const QString& name)
{
    fuzz::require(!name.isEmpty() && name != QStringLiteral(".") && name != QStringLiteral(".."),
                  "a name is the name of a file");
    fuzz::require(!name.contains(u'/') && !name.contains(QChar(u'\0')), "a name is no path");
    fuzz::require(QFile::encodeName(name).size() <= 255, "a name fits a file system");
    fuzz::require(std::ranges::none_of(name, changesTheDirection), "a name reads as it is");
}

} // namespace

/// The name that a server gives an attachment.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = fuzz::textOf(data, size);
    const QString name = downloadFileName(text);
    requireFileName(name);
    fuzz::require(name.endsWith(QStringLiteral(".tessaloom")), "a document has its extension");

    const QString folder = QStringLiteral("/folder that is not there/");
    const QFileInfo destination(cli::downloadDestination(folder, text));
    fuzz::require(destination.path() + u'/' == folder, "a download stays in its folder");
    requireFileName(destination.fileName());
    return 0;
}
