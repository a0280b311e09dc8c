#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <string_view>

namespace torture {

/// What a program asks of the system, by the call that it stands for here. Calls that differ in their form only are
/// one: `Open` is also creat and fopen, `Remove` is unlink, rmdir and remove, `Pipe` is every way to a descriptor that
/// wakes.
enum class Function : std::uint32_t {
    Open,
    Read,
    Write,
    Close,
    Sync,
    Rename,
    Remove,
    MakeFolder,
    Stat,
    Link,
    Permissions,
    Lock,
    ReadFolder,
    Socket,
    Connect,
    Send,
    Receive,
    Poll,
    Pipe,
    Thread,
    Malloc,
    Calloc,
    Realloc,
    Count
};

inline constexpr auto functionCount = static_cast<std::size_t>(Function::Count);

/// As a reader of the table knows them.
inline constexpr std::array<std::string_view, functionCount> functionNames = {
    "open", "read", "write", "close",          "fsync",   "rename", "unlink",  "mkdir",
    "stat", "link", "chmod", "flock",          "readdir", "socket", "connect", "send",
    "recv", "poll", "pipe",  "pthread_create", "malloc",  "calloc", "realloc"};

/// Not an errno: the call does half of what it was asked for, as the system may at any time.
inline constexpr std::int32_t halfDone = -1;

/// What the preloaded library is to do, and what it has seen: shared memory of the program under test and its
/// tormentor, so that it is there however the program ended. Calls are counted from main() on, from 1.
struct Board
{
    // Orders, written before the program starts.
    Function function = Function::Count; ///< Count: none is refused
    std::uint32_t call = 0;              ///< the first that is refused
    std::uint32_t lasts = 0;             ///< so are all after it
    std::int32_t error = 0;
    std::uint32_t killAtChange = 0; ///< SIGKILL comes before this change of the file system; 0: never
    std::uint32_t killHalfway = 0;  ///< and when the change is a write, half of it is done
    std::uint32_t logsChanges = 0;  ///< to the file that TORTURE_CHANGES names

    // Findings.
    std::array<std::atomic<std::uint32_t>, functionCount> calls = {};
    std::atomic<std::uint32_t> changes = 0;        ///< calls that change the file system
    std::atomic<std::uint32_t> refusals = 0;       ///< calls that were refused or halved
    std::atomic<std::uint32_t> silencedOutput = 0; ///< of these, writes to standard output
    std::atomic<std::uint32_t> silencedError = 0;  ///< of these, writes to standard error
    std::array<char, 240> firstRefused = {};       ///< a path, or what a descriptor leads to
};

/// One change of the file system in the log, followed by both paths and the data.
struct ChangeHead
{
    enum class Kind : std::uint32_t { Create, Truncate, Write, Sync, Rename, Remove, MakeFolder, Link };

    Kind kind = Kind::Create;
    std::uint32_t pathLength = 0;
    std::uint32_t otherPathLength = 0;
    std::uint32_t dataLength = 0;
    std::uint64_t inode = 0;
    std::int64_t offset = 0; ///< of a write; the new size of what is truncated
};

} // namespace torture
