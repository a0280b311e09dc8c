#pragma once

#include <functional>
#include <memory>

/// What a port to another system has to provide for programs of the command line.
namespace tljira::console {

/// Turns the requests to end that come from outside (Ctrl-C, a closed terminal, a shutdown) into events of the main
/// thread. One in the process, made before any thread. What the parent process chose to ignore stays ignored. A main
/// thread that does not get to its events for two seconds is not waited for: the process ends with 128 and the number.
class InterruptSignal
{
public:
    /// Gets the number that shells know the request by (2 for Ctrl-C, 15 for termination, 1 for a closed terminal), for
    /// each request in turn.
    using Handler = std::function<void(int)>;

    InterruptSignal();
    ~InterruptSignal();
    InterruptSignal(const InterruptSignal&) = delete;
    InterruptSignal& operator=(const InterruptSignal&) = delete;

    /// Whether a request waits to be handled.
    bool isPending() const;

    /// Needs the application object. Requests that came before are handled too.
    void setHandler(Handler handler);

private:
    friend class Input;
    class Pipe;

    const std::unique_ptr<Pipe> m_pipe;
};

} // namespace tljira::console
