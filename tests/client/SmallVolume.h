#pragma once

#include <QString>

namespace tests {

/// A file system of its own with room for 1 MiB, for as long as the process lives and seen by nobody else. Where the
/// process may not mount any, `isMounted` is false.
class SmallVolume
{
public:
    explicit SmallVolume(const QString& path);

    bool isMounted() const { return m_isMounted; }

private:
    bool m_isMounted = false;
};

} // namespace tests
