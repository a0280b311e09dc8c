#include "platform/console/StandardStreams.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tljira::console {

namespace {

/// Whoever started the program may have left the stream in a state in which it does not wait by itself.
void awaitRoom(int descriptor)
{
    pollfd state = {descriptor, POLLOUT, 0};
    ::poll(&state, 1, -1);
}

std::optional<int> writeAll(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const auto written = ::write(descriptor, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (written >= 0)
            bytes = bytes.sliced(written);
        else if (errno == EAGAIN)
            awaitRoom(descriptor);
        else if (errno != EINTR)
            return errno;
    }
    return std::nullopt;
}

} // namespace

void prepareStandardStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open("/dev/null", O_RDWR);
    }
}

std::optional<QString> writeOutput(const QByteArray& bytes)
{
    const auto reason = writeAll(STDOUT_FILENO, bytes);
    return reason ? std::optional(qt_error_string(*reason)) : std::nullopt;
}

void writeError(const QByteArray& bytes)
{
    writeAll(STDERR_FILENO, bytes);
}

bool isErrorTerminal()
{
    return ::isatty(STDERR_FILENO) == 1;
}

int terminalColumns()
{
    winsize size = {};
    const bool isKnown = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
    return isKnown ? size.ws_col : 80;
}

} // namespace tljira::console
