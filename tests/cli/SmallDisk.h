#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <sys/mount.h>

namespace tests {

/// A file system of one megabyte, where the tests may mount one.
class SmallDisk
{
public:
    SmallDisk()
        : m_isMounted(::mount("tmpfs", folder().constData(), "tmpfs", 0, "size=1m") == 0)
    {
    }
    ~SmallDisk()
    {
        if (m_isMounted)
            ::umount(folder().constData());
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isThere() const { return m_isMounted; }
    QString path() const { return m_folder.path(); }

private:
    QByteArray folder() const { return QFile::encodeName(m_folder.path()); }

    QTemporaryDir m_folder;
    bool m_isMounted;
};

} // namespace tests
