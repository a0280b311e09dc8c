#pragma once

#include <QByteArray>
#include <QString>

namespace tests {

/// A file system of its own, seen by nobody but this process and those that it starts. Root alone may have
/// one, and not in every container; elsewhere `isThere` is false.
class SmallDisk
{
public:
    /// Over the folder, which is made if need be. The size in KiB.
    SmallDisk(const QString& folder, int size);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isThere() const { return m_isThere; }
    /// Whether it is now.
    bool makeReadOnly();

private:
    QByteArray m_folder;
    bool m_isThere = false;
};

} // namespace tests
