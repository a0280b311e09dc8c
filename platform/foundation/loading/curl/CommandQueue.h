#pragma once

#include <curl/curl.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

namespace tljira {

/// What other threads ask of the network thread, and what wakes it. Whoever may still be busy when that thread has
/// ended (a disk that does not answer, say) holds on to the queue alone; what is asked then is dropped.
class CommandQueue
{
public:
    using Command = std::function<void()>;

    /// `multi` is what the network thread waits with, until `close`.
    explicit CommandQueue(CURLM* multi);

    ///@{
    /// From any thread.
    void post(Command command);
    /// Asks the network thread to end.
    void stop();
    /// Takes no more commands and drops those that are left. The handle may go then.
    void close();
    ///@}

    ///@{
    /// The network thread's own.
    bool isStopped() const;
    std::vector<Command> take();
    /// Returns when there is something to do.
    void wait();
    /// For who waits with `multi`. False when there is something to do; otherwise `endWait` must follow.
    bool beginWait();
    void endWait();
    ///@}

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_hasCommand;
    CURLM* m_multi;
    std::vector<Command> m_commands;
    bool m_isStopped = false;
    bool m_isWaiting = false;
};

} // namespace tljira
