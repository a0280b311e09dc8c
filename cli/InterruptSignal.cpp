#include "cli/InterruptSignal.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace cli {

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

void install(int number)
{
    struct sigaction present = {};
    ::sigaction(number, nullptr, &present);
    if (present.sa_handler == SIG_IGN)
        return;
    struct sigaction action = {};
    action.sa_handler = handleSignal;
    action.sa_flags = SA_RESTART;
    ::sigaction(number, &action, nullptr);
}

} // namespace

InterruptSignal::InterruptSignal()
{
    std::array<int, 2> ends = {-1, -1};
    if (::pipe(ends.data()) != 0)
        return;
    m_readEnd = ends[0];
    m_writeEnd = ends[1];
    prepareEnd(m_readEnd);
    prepareEnd(m_writeEnd);
    handlersWriteEnd = m_writeEnd;
    for (const int number : signalNumbers)
        install(number);
}

InterruptSignal::~InterruptSignal()
{
    for (const int number : signalNumbers)
        std::signal(number, SIG_DFL);
    m_notifier.reset();
    ::close(m_readEnd);
    ::close(m_writeEnd);
}

void InterruptSignal::setHandler(Handler handler)
{
    m_handler = std::move(handler);
    m_notifier = std::make_unique<QSocketNotifier>(m_readEnd, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readSignals(); });
}

void InterruptSignal::readSignals()
{
    unsigned char number = 0;
    while (::read(m_readEnd, &number, 1) == 1)
        m_handler(number);
}

} // namespace cli
