#include "platform/console/InterruptSignal.h"

#include "platform/console/SignalPipe.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace tljira::console {

namespace {

constexpr std::array signalNumbers = {SIGINT, SIGTERM, SIGHUP};

/// After so many seconds nobody waits for a main thread that is busy with what a hostile server sent, or that writes to
/// a reader who has gone to sleep.
constexpr unsigned longestDeafness = 2;

///@{
/// All that the signal handlers use.
volatile std::sig_atomic_t handlersWriteEnd = -1;
volatile std::sig_atomic_t unheardNumber = 0;
///@}

/// Hands the signal's number on through the pipe. A full pipe loses the signal, and there are enough of them then.
void handleSignal(int number)
{
    const int reason = errno;
    if (unheardNumber == 0) {
        unheardNumber = number;
        ::alarm(longestDeafness);
    }
    const auto byte = static_cast<unsigned char>(number);
    [[maybe_unused]] const auto written = ::write(handlersWriteEnd, &byte, 1);
    errno = reason;
}

void endUnheard(int)
{
    ::_exit(128 + unheardNumber);
}

void prepareEnd(int descriptor)
{
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    ::fcntl(descriptor, F_SETFL, O_NONBLOCK);
}

auto handlerOf(int number)
{
    struct sigaction present = {};
    ::sigaction(number, nullptr, &present);
    return present.sa_handler;
}

void install(int number)
{
    if (handlerOf(number) == SIG_IGN)
        return;
    struct sigaction action = {};
    action.sa_handler = handleSignal;
    action.sa_flags = SA_RESTART;
    ::sigaction(number, &action, nullptr);
}

} // namespace

InterruptSignal::Pipe::Pipe()
{
    if (::pipe(m_ends.data()) != 0)
        return;
    for (const int end : m_ends)
        prepareEnd(end);
}

InterruptSignal::Pipe::~Pipe()
{
    m_notifier.reset();
    for (const int end : m_ends)
        ::close(end);
}

void InterruptSignal::Pipe::setHandler(Handler handler)
{
    m_handler = std::move(handler);
    m_notifier = std::make_unique<QSocketNotifier>(readEnd(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readSignals(); });
}

void InterruptSignal::Pipe::readSignals()
{
    ::alarm(0);
    unheardNumber = 0;
    unsigned char number = 0;
    while (::read(readEnd(), &number, 1) == 1)
        m_handler(number);
}

InterruptSignal::InterruptSignal()
    : m_pipe(std::make_unique<Pipe>())
{
    if (m_pipe->writeEnd() < 0)
        return;
    handlersWriteEnd = m_pipe->writeEnd();
    std::signal(SIGALRM, endUnheard);
    for (const int number : signalNumbers)
        install(number);
}

InterruptSignal::~InterruptSignal()
{
    ::alarm(0);
    unheardNumber = 0;
    std::signal(SIGALRM, SIG_DFL);
    for (const int number : signalNumbers) {
        if (handlerOf(number) == handleSignal)
            std::signal(number, SIG_DFL);
    }
}

bool InterruptSignal::isPending() const
{
    pollfd state = {m_pipe->readEnd(), POLLIN, 0};
    return ::poll(&state, 1, 0) == 1;
}

void InterruptSignal::setHandler(Handler handler)
{
    m_pipe->setHandler(std::move(handler));
}

} // namespace tljira::console
