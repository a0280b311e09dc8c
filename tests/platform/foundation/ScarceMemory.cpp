#include "tests/platform/foundation/ScarceMemory.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <new>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// 0: none is refused.
thread_local int callsUntilRefusal = 0;

enum Ending { Right, Misled, Ended, NothingRefused };

constexpr unsigned secondsUntilHung = 30;

Ending endingWithout(int call, const std::function<bool()>& isRight)
{
    alarm(secondsUntilHung);
    callsUntilRefusal = call;
    try {
        if (!isRight())
            return Misled;
    } catch (const std::bad_alloc&) {
        return Ended;
    }
    return callsUntilRefusal == 0 ? Right : NothingRefused;
}

} // namespace

extern "C" void* __libc_malloc(std::size_t size);

// Takes the place of the C library's in this program.
extern "C" void* malloc(std::size_t size)
{
    if (callsUntilRefusal > 0 && --callsUntilRefusal == 0) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_malloc(size);
}

namespace tests {

int firstCallThatMisleads(const std::function<bool()>& isRight)
{
    for (int call = 1;; ++call) {
        const pid_t child = fork();
        if (child == 0)
            _exit(endingWithout(call, isRight));
        int status = 0;
        if (child < 0 || waitpid(child, &status, 0) != child)
            return call;
        const bool isHung = WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM;
        if (isHung || (WIFEXITED(status) && WEXITSTATUS(status) == Misled))
            return call;
        if (WIFEXITED(status) && WEXITSTATUS(status) == NothingRefused)
            return 0;
        // Without memory a process may end in any other way: Qt does not always look at the answer of malloc.
    }
}

} // namespace tests
