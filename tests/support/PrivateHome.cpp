#include "tests/support/PrivateHome.h"

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
}

} // namespace tests
