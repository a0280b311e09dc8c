#include "tests/platform/foundation/FailingSync.h"

#include <atomic>
#include <cerrno>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::atomic<int> callsUntilFailure = 0;

} // namespace

// Takes the place of the system's in this program.
extern "C" int fsync(int descriptor)
{
    if (callsUntilFailure > 0 && --callsUntilFailure == 0) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace tests {

FailingSync::FailingSync(int number)
{
    callsUntilFailure = number;
}

FailingSync::~FailingSync()
{
    callsUntilFailure = 0;
}

} // namespace tests
