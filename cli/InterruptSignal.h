#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace cli {

/// Turns SIGINT, SIGTERM and SIGHUP into events of the main thread. One in the process, made before any thread. A
/// signal that the parent process chose to ignore stays ignored.
class InterruptSignal
{
public:
    /// Gets the signal's number, for each signal in turn.
    using Handler = std::function<void(int)>;

    InterruptSignal();
    ~InterruptSignal();
    InterruptSignal(const InterruptSignal&) = delete;
    InterruptSignal& operator=(const InterruptSignal&) = delete;

    /// Readable as long as a signal waits to be handled: for code that blocks instead of running the event loop.
    int descriptor() const { return m_readEnd; }

    /// Needs the application object. Signals that came before are handled too.
    void setHandler(Handler handler);

private:
    void readSignals();

    int m_readEnd = -1;
    int m_writeEnd = -1;
    Handler m_handler;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace cli
