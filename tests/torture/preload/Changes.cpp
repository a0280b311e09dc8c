#include "tests/torture/preload/Changes.h"

#include "tests/torture/preload/Calls.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace torture {

namespace {

// Never destroyed: changes go on while the process exits.
std::recursive_mutex& order = *new std::recursive_mutex;

int openLog()
{
    const char* const path = std::getenv("TORTURE_CHANGES");
    return path ? static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_APPEND | O_CLOEXEC, 0)) : -1;
}

bool isRegular(int descriptor)
{
    struct stat status = {};
    static auto* const look = next<int(int, struct stat*)>("fstat");
    return look(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

Change::Change()
{
    begin();
}

Change::Change(int descriptor)
    : m_isChange(board() && isRegular(descriptor))
{
    begin();
}

void Change::begin()
{
    Board* const orders = board();
    m_isChange = m_isChange && orders;
    if (!m_isChange)
        return;
    m_isLogged = orders->logsChanges != 0;
    if (m_isLogged)
        order.lock();
    if (++orders->changes != orders->killAtChange)
        return;
    m_diesHalfway = orders->killHalfway != 0;
    if (!m_diesHalfway)
        die();
}

Change::~Change()
{
    if (m_isLogged)
        order.unlock();
}

void Change::die()
{
    syscall(SYS_kill, getpid(), SIGKILL);
    std::abort();
}

void Change::log(const ChangeHead& head, const std::string& path, const std::string& otherPath, const void* data) const
{
    static const int file = openLog();
    if (!m_isLogged || file < 0)
        return;
    const int reason = errno;
    ChangeHead whole = head;
    whole.pathLength = static_cast<std::uint32_t>(path.size());
    whole.otherPathLength = static_cast<std::uint32_t>(otherPath.size());
    const auto piece = [](const void* bytes, std::size_t size) { return iovec{const_cast<void*>(bytes), size}; };
    const std::array pieces = {piece(&whole, sizeof whole), piece(path.data(), path.size()),
                               piece(otherPath.data(), otherPath.size()), piece(data, data ? whole.dataLength : 0)};
    syscall(SYS_writev, file, pieces.data(), pieces.size());
    errno = reason;
}

std::string absolutePath(int folder, const char* path)
{
    if (*path == '/')
        return path;
    std::array<char, PATH_MAX> place = {};
    const std::string link = folder == AT_FDCWD ? "/proc/self/cwd" : "/proc/self/fd/" + std::to_string(folder);
    const auto length = syscall(SYS_readlink, link.c_str(), place.data(), place.size());
    return std::string(place.data(), length > 0 ? static_cast<std::size_t>(length) : 0) + '/' + path;
}

ino_t inodeOf(const char* path)
{
    struct stat status = {};
    static auto* const look = next<int(const char*, struct stat*)>("lstat");
    const int reason = errno;
    const bool isThere = look(path, &status) == 0;
    errno = reason;
    return isThere ? status.st_ino : 0;
}

ino_t inodeOf(int descriptor)
{
    struct stat status = {};
    static auto* const look = next<int(int, struct stat*)>("fstat");
    return look(descriptor, &status) == 0 ? status.st_ino : 0;
}

} // namespace torture
