#include "tests/kit/PrivateHome.h"

#include <QDir>

namespace tests {

PrivateHome::PrivateHome()
{
    const auto place = [this](const char* variable, const char* name) {
        const QString folder = m_folder.filePath(QLatin1String(name));
        QDir().mkpath(folder);
        qputenv(variable, folder.toUtf8());
    };
    place("HOME", "home");
    place("XDG_CONFIG_HOME", "config");
    place("XDG_DATA_HOME", "data");
    place("XDG_CACHE_HOME", "cache");
    place("TMPDIR", "tmp");
    // Without a locale, as in a fresh Debian, Qt complains to standard error, where tests look for other things.
    const auto isSet = [](const char* variable) { return !qEnvironmentVariableIsEmpty(variable); };
    if (!isSet("LC_ALL") && !isSet("LC_CTYPE") && !isSet("LANG"))
        qputenv("LC_ALL", "C.UTF-8");
}

} // namespace tests
