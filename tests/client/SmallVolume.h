#pragma once

#include <QByteArray>
#include <QString>

namespace tests {

/// A file system of its own with room for 1 MiB, seen by nobody but this process. Where the process may not mount any,
/// `isMounted` is false.
class SmallVolume
{
public:
    explicit SmallVolume(const QString& path);
    ~SmallVolume();
    SmallVolume(const SmallVolume&) = delete;
    SmallVolume& operator=(const SmallVolume&) = delete;

    bool isMounted() const { return m_isMounted; }

private:
    QByteArray m_path;
    bool m_isMounted = false;
};

} // namespace tests
