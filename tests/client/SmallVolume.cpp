#include "tests/client/SmallVolume.h"

#include <QDir>
#include <QFile>

#include <sched.h>
#include <sys/mount.h>

namespace tests {

SmallVolume::SmallVolume(const QString& path)
    : m_path(QFile::encodeName(path))
{
    QDir().mkpath(path);
    // The mount belongs to this thread and those that it starts from now on.
    m_isMounted = unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                  mount("small", m_path.constData(), "tmpfs", 0, "size=1m,mode=700") == 0;
}

SmallVolume::~SmallVolume()
{
    if (m_isMounted)
        umount2(m_path.constData(), MNT_DETACH);
}

} // namespace tests
