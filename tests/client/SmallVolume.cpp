#include "tests/client/SmallVolume.h"

#include <QDir>
#include <QFile>

#include <sched.h>
#include <sys/mount.h>

namespace tests {

SmallVolume::SmallVolume(const QString& path)
{
    QDir().mkpath(path);
    const QByteArray place = QFile::encodeName(path);
    // The mount belongs to this thread and those that it starts from now on.
    m_isMounted = unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                  mount("small", place.constData(), "tmpfs", 0, "size=1m,mode=700") == 0;
}

} // namespace tests
