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

/// All that the signal handler uses.
volatile std::sig_atomic_t handlersWriteEnd = -1;

/// Hands the signal's number on through the pipe. A full pipe loses the signal, and there are enough of them then.
void handleSignal(int number)
{
    const int reason = errno;
    const auto byte = static_cast<unsigned char>(number);
    [[maybe_unused]] const auto written = ::write(handlersWriteEnd, &byte, 1);
    errno = reason;
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
    for (const int number : signalNumbers)
        install(number);
}

InterruptSignal::~InterruptSignal()
{
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
