#include "tests/torture/preload/Calls.h"
#include "tests/torture/preload/Changes.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

// Opening, reading and writing.

using torture::Change;
using torture::ChangeHead;
using torture::Fate;
using torture::fateOf;
using torture::Function;
using torture::isRefused;
using torture::share;
using Kind = torture::ChangeHead::Kind;

namespace {

/// Opens by `open`, and logs what became of the name.
template <typename Open>
int openFile(int folder, const char* path, int flags, const Open& open)
{
    if (isRefused(Function::Open, path))
        return -1;
    if ((flags & (O_CREAT | O_TRUNC)) == 0)
        return open();
    const Change change;
    const std::string place = change.isLogged() ? torture::absolutePath(folder, path) : std::string();
    const bool isNew = change.isLogged() && torture::inodeOf(place.c_str()) == 0;
    const int file = open();
    if (file >= 0 && change.isLogged() && (isNew || (flags & O_TRUNC)))
        change.log({.kind = isNew ? Kind::Create : Kind::Truncate, .inode = torture::inodeOf(file)}, place);
    return file;
}

template <typename Open>
std::FILE* openStream(const char* path, const char* mode, const Open& open)
{
    std::FILE* stream = nullptr;
    const bool isWritten = mode[0] != 'r';
    openFile(AT_FDCWD, path, isWritten ? O_CREAT | (mode[0] == 'w' ? O_TRUNC : 0) : 0, [&] {
        stream = open();
        return stream ? fileno(stream) : -1;
    });
    return stream;
}

/// Writes by `write(bytes)`. `size` is how much that is to be.
template <typename Write>
ssize_t writeFile(int file, const void* bytes, std::size_t size, std::int64_t offset, const Write& write)
{
    const Fate fate = fateOf(Function::Write, file);
    if (fate == Fate::Refused)
        return -1;
    const Change change(file);
    if (change.diesHalfway()) {
        write(size / 2);
        Change::die();
    }
    if (change.isLogged() && offset < 0)
        offset = lseek(file, 0, SEEK_CUR);
    const ssize_t written = write(share(fate, size));
    if (written > 0 && change.isLogged()) {
        change.log({.kind = Kind::Write,
                    .dataLength = static_cast<std::uint32_t>(written),
                    .inode = torture::inodeOf(file),
                    .offset = offset},
                   {}, {}, bytes);
    }
    return written;
}

mode_t modeOf(int flags, mode_t mode)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? mode : 0;
}

} // namespace

// A variable argument is passed as the fixed one that it is in all calls.

STAND_IN(int, open, const char* path, int flags, mode_t mode)
{
    return openFile(AT_FDCWD, path, flags, [&] { return PASS_ON(open, path, flags, modeOf(flags, mode)); });
}

STAND_IN(int, open64, const char* path, int flags, mode_t mode)
{
    return openFile(AT_FDCWD, path, flags, [&] { return PASS_ON(open64, path, flags, modeOf(flags, mode)); });
}

STAND_IN(int, __open_2, const char* path, int flags)
{
    return openFile(AT_FDCWD, path, flags, [&] { return PASS_ON(__open_2, path, flags); });
}

STAND_IN(int, __open64_2, const char* path, int flags)
{
    return openFile(AT_FDCWD, path, flags, [&] { return PASS_ON(__open64_2, path, flags); });
}

STAND_IN(int, openat, int folder, const char* path, int flags, mode_t mode)
{
    return openFile(folder, path, flags, [&] { return PASS_ON(openat, folder, path, flags, modeOf(flags, mode)); });
}

STAND_IN(int, openat64, int folder, const char* path, int flags, mode_t mode)
{
    return openFile(folder, path, flags, [&] { return PASS_ON(openat64, folder, path, flags, modeOf(flags, mode)); });
}

STAND_IN(int, creat, const char* path, mode_t mode)
{
    return openFile(AT_FDCWD, path, O_CREAT | O_TRUNC, [&] { return PASS_ON(creat, path, mode); });
}

STAND_IN(std::FILE*, fopen, const char* path, const char* mode)
{
    return openStream(path, mode, [&] { return PASS_ON(fopen, path, mode); });
}

STAND_IN(std::FILE*, fopen64, const char* path, const char* mode)
{
    return openStream(path, mode, [&] { return PASS_ON(fopen64, path, mode); });
}

STAND_IN(int, close, int file)
{
    const bool isRefusedThen = isRefused(Function::Close, file);
    const int reason = errno;
    const int result = PASS_ON(close, file);
    if (isRefusedThen)
        errno = reason;
    return isRefusedThen ? -1 : result;
}

STAND_IN(int, fclose, std::FILE* stream)
{
    const bool isRefusedThen = isRefused(Function::Close, fileno(stream));
    const int reason = errno;
    const int result = PASS_ON(fclose, stream);
    if (isRefusedThen)
        errno = reason;
    return isRefusedThen ? EOF : result;
}

STAND_IN(ssize_t, read, int file, void* buffer, std::size_t size)
{
    const Fate fate = fateOf(Function::Read, file);
    // Half of what wakes a sleeper is nothing that the system gives.
    return fate == Fate::Refused ? -1 : PASS_ON(read, file, buffer, size > 8 ? share(fate, size) : size);
}

STAND_IN(ssize_t, __read_chk, int file, void* buffer, std::size_t size, std::size_t room)
{
    const Fate fate = fateOf(Function::Read, file);
    return fate == Fate::Refused ? -1 : PASS_ON(__read_chk, file, buffer, size > 8 ? share(fate, size) : size, room);
}

STAND_IN(ssize_t, pread, int file, void* buffer, std::size_t size, off_t offset)
{
    const Fate fate = fateOf(Function::Read, file);
    return fate == Fate::Refused ? -1 : PASS_ON(pread, file, buffer, share(fate, size), offset);
}

STAND_IN(ssize_t, pread64, int file, void* buffer, std::size_t size, off64_t offset)
{
    const Fate fate = fateOf(Function::Read, file);
    return fate == Fate::Refused ? -1 : PASS_ON(pread64, file, buffer, share(fate, size), offset);
}

STAND_IN(ssize_t, readv, int file, const iovec* pieces, int count)
{
    return isRefused(Function::Read, file) ? -1 : PASS_ON(readv, file, pieces, count);
}

STAND_IN(std::size_t, fread, void* buffer, std::size_t size, std::size_t count, std::FILE* stream)
{
    // What is read halfway is no error for who reads a stream, which goes on by itself.
    if (fateOf(Function::Read, fileno(stream)) != Fate::Refused)
        return PASS_ON(fread, buffer, size, count, stream);
    constexpr int hasFailed = 0x20; // What ferror() looks at.
    stream->_flags |= hasFailed;
    return 0;
}

STAND_IN(ssize_t, write, int file, const void* bytes, std::size_t size)
{
    const auto pass = [&](std::size_t part) { return PASS_ON(write, file, bytes, part); };
    return size > 8 ? writeFile(file, bytes, size, -1, pass)
                    : writeFile(file, bytes, size, -1, [&](std::size_t part) { return pass(part ? size : part); });
}

STAND_IN(ssize_t, pwrite, int file, const void* bytes, std::size_t size, off_t offset)
{
    return writeFile(file, bytes, size, offset,
                     [&](std::size_t part) { return PASS_ON(pwrite, file, bytes, part, offset); });
}

STAND_IN(ssize_t, pwrite64, int file, const void* bytes, std::size_t size, off64_t offset)
{
    return writeFile(file, bytes, size, offset,
                     [&](std::size_t part) { return PASS_ON(pwrite64, file, bytes, part, offset); });
}

STAND_IN(ssize_t, writev, int file, const iovec* pieces, int count)
{
    return isRefused(Function::Write, file) ? -1 : PASS_ON(writev, file, pieces, count);
}

STAND_IN(std::size_t, fwrite, const void* bytes, std::size_t size, std::size_t count, std::FILE* stream)
{
    const auto pass = [&](std::size_t part) { return static_cast<ssize_t>(PASS_ON(fwrite, bytes, 1, part, stream)); };
    const ssize_t written = writeFile(fileno(stream), bytes, size * count, -1, pass);
    if (written == static_cast<ssize_t>(size * count))
        return count;
    // Who writes to a stream is told of less only where the disk is full.
    if (written >= 0)
        errno = ENOSPC;
    return written > 0 ? static_cast<std::size_t>(written) / size : 0;
}

STAND_IN(int, fsync, int file)
{
    if (isRefused(Function::Sync, file))
        return -1;
    const Change change;
    const int result = PASS_ON(fsync, file);
    if (result == 0 && change.isLogged()) {
        const std::string place = torture::absolutePath(file, "");
        change.log({.kind = Kind::Sync, .inode = torture::inodeOf(file)}, place.substr(0, place.size() - 1));
    }
    return result;
}

STAND_IN(int, fdatasync, int file)
{
    return standIn_fsync(file);
}
