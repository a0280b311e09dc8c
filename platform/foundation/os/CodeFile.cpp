#include "platform/foundation/os/CodeFile.h"

#include <QFile>

#include <dlfcn.h>

namespace tljira::os {

QString fileOfThisCode()
{
    Dl_info info = {};
    const bool isKnown = dladdr(reinterpret_cast<const void*>(&fileOfThisCode), &info) != 0;
    return isKnown && info.dli_fname ? QFile::decodeName(info.dli_fname) : QString();
}

} // namespace tljira::os
