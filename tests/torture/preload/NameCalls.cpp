#include "tests/torture/preload/Calls.h"
#include "tests/torture/preload/Changes.h"

#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Names: what is under them, and what becomes of them.

using torture::absolutePath;
using torture::Change;
using torture::Function;
using torture::isRefused;
using Kind = torture::ChangeHead::Kind;

namespace {

template <typename Call>
int renameItem(int fromFolder, const char* from, int toFolder, const char* to, const Call& call)
{
    if (isRefused(Function::Rename, from))
        return -1;
    const Change change;
    const int result = call();
    if (result == 0 && change.isLogged())
        change.log({.kind = Kind::Rename}, absolutePath(fromFolder, from), absolutePath(toFolder, to));
    return result;
}

template <typename Call>
int removeItem(int folder, const char* path, const Call& call)
{
    if (isRefused(Function::Remove, path))
        return -1;
    const Change change;
    const int result = call();
    if (result == 0 && change.isLogged())
        change.log({.kind = Kind::Remove}, absolutePath(folder, path));
    return result;
}

template <typename Call>
int makeFolder(int folder, const char* path, const Call& call)
{
    if (isRefused(Function::MakeFolder, path))
        return -1;
    const Change change;
    const int result = call();
    if (result == 0 && change.isLogged()) {
        const std::string place = absolutePath(folder, path);
        change.log({.kind = Kind::MakeFolder, .inode = torture::inodeOf(place.c_str())}, place);
    }
    return result;
}

template <typename Call>
int setPermissions(const char* path, const Call& call)
{
    if (isRefused(Function::Permissions, path))
        return -1;
    const Change change;
    return call();
}

} // namespace

STAND_IN(int, rename, const char* from, const char* to)
{
    return renameItem(AT_FDCWD, from, AT_FDCWD, to, [&] { return PASS_ON(rename, from, to); });
}

STAND_IN(int, renameat, int fromFolder, const char* from, int toFolder, const char* to)
{
    return renameItem(fromFolder, from, toFolder, to,
                      [&] { return PASS_ON(renameat, fromFolder, from, toFolder, to); });
}

STAND_IN(int, renameat2, int fromFolder, const char* from, int toFolder, const char* to, unsigned flags)
{
    return renameItem(fromFolder, from, toFolder, to,
                      [&] { return PASS_ON(renameat2, fromFolder, from, toFolder, to, flags); });
}

STAND_IN(int, unlink, const char* path)
{
    return removeItem(AT_FDCWD, path, [&] { return PASS_ON(unlink, path); });
}

STAND_IN(int, unlinkat, int folder, const char* path, int flags)
{
    return removeItem(folder, path, [&] { return PASS_ON(unlinkat, folder, path, flags); });
}

STAND_IN(int, remove, const char* path)
{
    return removeItem(AT_FDCWD, path, [&] { return PASS_ON(remove, path); });
}

STAND_IN(int, rmdir, const char* path)
{
    return removeItem(AT_FDCWD, path, [&] { return PASS_ON(rmdir, path); });
}

STAND_IN(int, mkdir, const char* path, mode_t mode)
{
    return makeFolder(AT_FDCWD, path, [&] { return PASS_ON(mkdir, path, mode); });
}

STAND_IN(int, mkdirat, int folder, const char* path, mode_t mode)
{
    return makeFolder(folder, path, [&] { return PASS_ON(mkdirat, folder, path, mode); });
}

STAND_IN(int, link, const char* from, const char* to)
{
    if (isRefused(Function::Link, from))
        return -1;
    const Change change;
    const int result = PASS_ON(link, from, to);
    if (result == 0 && change.isLogged())
        change.log({.kind = Kind::Link, .inode = torture::inodeOf(to)}, absolutePath(AT_FDCWD, to));
    return result;
}

STAND_IN(int, chmod, const char* path, mode_t mode)
{
    return setPermissions(path, [&] { return PASS_ON(chmod, path, mode); });
}

STAND_IN(int, fchmod, int file, mode_t mode)
{
    return setPermissions("a descriptor", [&] { return PASS_ON(fchmod, file, mode); });
}

STAND_IN(int, fchmodat, int folder, const char* path, mode_t mode, int flags)
{
    return setPermissions(path, [&] { return PASS_ON(fchmodat, folder, path, mode, flags); });
}

STAND_IN(int, flock, int file, int operation)
{
    return isRefused(Function::Lock, file) ? -1 : PASS_ON(flock, file, operation);
}

STAND_IN(DIR*, opendir, const char* path)
{
    return isRefused(Function::ReadFolder, path) ? nullptr : PASS_ON(opendir, path);
}

STAND_IN(DIR*, fdopendir, int file)
{
    return isRefused(Function::ReadFolder, file) ? nullptr : PASS_ON(fdopendir, file);
}

STAND_IN(dirent*, readdir, DIR* folder)
{
    return isRefused(Function::ReadFolder, dirfd(folder)) ? nullptr : PASS_ON(readdir, folder);
}

STAND_IN(dirent64*, readdir64, DIR* folder)
{
    return isRefused(Function::ReadFolder, dirfd(folder)) ? nullptr : PASS_ON(readdir64, folder);
}

STAND_IN(int, stat, const char* path, struct stat* status)
{
    return isRefused(Function::Stat, path) ? -1 : PASS_ON(stat, path, status);
}

STAND_IN(int, stat64, const char* path, struct stat64* status)
{
    return isRefused(Function::Stat, path) ? -1 : PASS_ON(stat64, path, status);
}

STAND_IN(int, lstat, const char* path, struct stat* status)
{
    return isRefused(Function::Stat, path) ? -1 : PASS_ON(lstat, path, status);
}

STAND_IN(int, lstat64, const char* path, struct stat64* status)
{
    return isRefused(Function::Stat, path) ? -1 : PASS_ON(lstat64, path, status);
}

STAND_IN(int, fstat, int file, struct stat* status)
{
    return isRefused(Function::Stat, file) ? -1 : PASS_ON(fstat, file, status);
}

STAND_IN(int, fstat64, int file, struct stat64* status)
{
    return isRefused(Function::Stat, file) ? -1 : PASS_ON(fstat64, file, status);
}

STAND_IN(int, fstatat, int folder, const char* path, struct stat* status, int flags)
{
    return isRefused(Function::Stat, path) ? -1 : PASS_ON(fstatat, folder, path, status, flags);
}

STAND_IN(int, fstatat64, int folder, const char* path, struct stat64* status, int flags)
{
    return isRefused(Function::Stat, path) ? -1 : PASS_ON(fstatat64, folder, path, status, flags);
}

STAND_IN(int, statx, int folder, const char* path, int flags, unsigned mask, struct statx* status)
{
    return isRefused(Function::Stat, path && *path ? path : "a descriptor")
               ? -1
               : PASS_ON(statx, folder, path, flags, mask, status);
}

STAND_IN(int, access, const char* path, int mode)
{
    return isRefused(Function::Stat, path) ? -1 : PASS_ON(access, path, mode);
}

STAND_IN(int, faccessat, int folder, const char* path, int mode, int flags)
{
    return isRefused(Function::Stat, path) ? -1 : PASS_ON(faccessat, folder, path, mode, flags);
}
