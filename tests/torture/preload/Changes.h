#pragma once

#include "tests/torture/Board.h"

#include <string>
#include <sys/types.h>

namespace torture {

/// Around a call that changes the file system: counts it, may be where the process is killed, and writes to the log
/// what the call did. Calls of several threads are logged in the order in which they are made.
class Change
{
public:
    /// Of a file under a name.
    Change();
    /// Of what a descriptor leads to; none when that is no regular file.
    explicit Change(int descriptor);
    ~Change();
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;

    /// A write is to do half of its work, and then to call die().
    bool diesHalfway() const { return m_diesHalfway; }
    [[noreturn]] static void die();

    bool isLogged() const { return m_isLogged; }
    void log(const ChangeHead& head, const std::string& path = {}, const std::string& otherPath = {},
             const void* data = nullptr) const;

private:
    void begin();

    bool m_isChange = true;
    bool m_isLogged = false;
    bool m_diesHalfway = false;
};

/// Of a path below a folder that is open, as the system takes it.
std::string absolutePath(int folder, const char* path);
/// 0 when there is none.
ino_t inodeOf(const char* path);
ino_t inodeOf(int descriptor);

} // namespace torture
