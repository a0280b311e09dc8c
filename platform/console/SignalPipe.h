#pragma once

#include "platform/console/InterruptSignal.h"

#include <QSocketNotifier>

#include <array>

namespace tljira::console {

/// The way from the signal handler to those who wait. Only for the sources of this folder.
class InterruptSignal::Pipe
{
public:
    Pipe();
    ~Pipe();
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    /// Readable as long as a signal waits to be handled.
    int readEnd() const { return m_ends[0]; }
    int writeEnd() const { return m_ends[1]; }
    void setHandler(Handler handler);

private:
    void readSignals();

    std::array<int, 2> m_ends = {-1, -1};
    Handler m_handler;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tljira::console
