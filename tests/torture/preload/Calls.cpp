#include "tests/torture/preload/Calls.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace torture {

namespace {

/// Null before main().
std::atomic<Board*> theBoard = nullptr;

using Main = int (*)(int, char**, char**);
Main programsMain = nullptr;

/// What is asked of the system here goes past the functions that are counted.
Board* findBoard()
{
    const char* const path = std::getenv("TORTURE_BOARD");
    if (!path)
        return nullptr;
    const long file = syscall(SYS_openat, AT_FDCWD, path, O_RDWR | O_CLOEXEC, 0);
    if (file < 0)
        return nullptr;
    void* const memory = mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED, static_cast<int>(file), 0);
    syscall(SYS_close, file);
    return memory == MAP_FAILED ? nullptr : static_cast<Board*>(memory);
}

int mainOfTorture(int count, char** arguments, char** environment)
{
    if (!std::getenv("TORTURE_WAITS"))
        theBoard = findBoard();
    return programsMain(count, arguments, environment);
}

void noteRefused(Board& board, const char* path, int descriptor)
{
    if (board.refusals++ > 0)
        return;
    auto& text = board.firstRefused;
    if (path) {
        std::strncpy(text.data(), path, text.size() - 1);
        return;
    }
    if (descriptor < 0)
        return;
    char link[] = "/proc/self/fd/          ";
    char* digit = link + sizeof link - 2;
    *digit = '\0';
    for (int rest = descriptor; rest > 0 || *digit == '\0'; rest /= 10)
        *--digit = static_cast<char>('0' + rest % 10);
    char place[64];
    std::strcpy(place, "/proc/self/fd/");
    std::strcat(place, digit);
    syscall(SYS_readlink, place, text.data(), text.size() - 1);
}

Fate decide(Function function, const char* path, int descriptor)
{
    Board* const board = theBoard;
    if (!board)
        return Fate::Done;
    const std::uint32_t number = ++board->calls[static_cast<std::size_t>(function)];
    if (board->function != function || number < board->call || (number > board->call && !board->lasts))
        return Fate::Done;
    const int reason = errno;
    noteRefused(*board, path, descriptor);
    if (function == Function::Write && descriptor == STDOUT_FILENO)
        ++board->silencedOutput;
    if (function == Function::Write && descriptor == STDERR_FILENO)
        ++board->silencedError;
    errno = board->error == halfDone ? reason : board->error;
    return board->error == halfDone ? Fate::Halved : Fate::Refused;
}

} // namespace

Fate fateOf(Function function, const char* path)
{
    return decide(function, path, -1);
}

Fate fateOf(Function function, int descriptor)
{
    return decide(function, nullptr, descriptor);
}

Board* board()
{
    return theBoard;
}

} // namespace torture

///@{
/// For a program that says itself where what matters begins and ends.
extern "C" [[gnu::visibility("default")]] void beginTorture()
{
    torture::theBoard = torture::findBoard();
}

extern "C" [[gnu::visibility("default")]] void endTorture()
{
    torture::theBoard = nullptr;
}
///@}

/// The C library's way into main(): so nothing is counted that the dynamic loader and the start-up of libraries do.
STAND_IN(int, __libc_start_main, torture::Main entry, int count, char** arguments, void (*start)(), void (*end)(),
         void (*loadersEnd)(), void* stackEnd)
{
    torture::programsMain = entry;
    return PASS_ON(__libc_start_main, torture::mainOfTorture, count, arguments, start, end, loadersEnd, stackEnd);
}
