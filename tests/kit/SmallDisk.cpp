#include "tests/kit/SmallDisk.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <sched.h>
#include <sys/mount.h>

namespace tests {

namespace {

/// What is mounted from now on belongs to this thread and those that it starts.
bool beginPrivateMounts()
{
    if (unshare(CLONE_NEWNS) != 0)
        return false;
    // The root of a chroot is no mount; what is mounted below it is as private as what it stands in.
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 || errno == EINVAL;
}

} // namespace

SmallDisk::SmallDisk(const QString& folder, int size)
    : m_folder(QFile::encodeName(folder))
{
    QDir().mkpath(folder);
    const QByteArray options = "mode=700,size=" + QByteArray::number(size) + 'k';
    m_isThere = beginPrivateMounts() && mount("tmpfs", m_folder.constData(), "tmpfs", 0, options.constData()) == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_isThere)
        umount2(m_folder.constData(), MNT_DETACH);
}

bool SmallDisk::makeReadOnly()
{
    return mount(nullptr, m_folder.constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

} // namespace tests
