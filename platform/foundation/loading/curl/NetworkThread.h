#pragma once

#include "platform/foundation/loading/curl/CommandQueue.h"
#include "platform/foundation/loading/curl/Transfer.h"

#include <curl/curl.h>

#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <unordered_map>
#include <vector>

namespace tljira {

/// The thread that owns the handles of libcurl and moves all bytes of a session. It begins with the first transfer and
/// ends with this object or, at the latest, when the process begins to exit, so that no transfer runs on while the
/// libraries below it are taken down. Neither a name server nor a file that is sent makes it wait.
///
/// A transfer ends once, by itself, by `cancel` or because it stalled. Two things leave it without an end: the end of
/// this object, where the session that would hear of it is gone, and the end of the process.
class NetworkThread
{
public:
    NetworkThread();
    ~NetworkThread();
    NetworkThread(const NetworkThread&) = delete;
    NetworkThread& operator=(const NetworkThread&) = delete;

    /// From any thread, as is `cancel`. A transfer that the system has no thread or memory for ends with an error, and
    /// the next one tries again. Does nothing after `stop`.
    void start(std::shared_ptr<Transfer> transfer);
    /// Ends the transfer with "cancelled" unless it has already ended.
    void cancel(std::shared_ptr<Transfer> transfer);

    /// Stops moving bytes and waits for the thread. What is under way stays as it is, and nobody is told.
    void stop();

    /// Removes the unfinished files of a thread that was stopped, and leaves everything else to the end of the process.
    void discardFiles();

private:
    struct ActiveTransfer
    {
        CURL* easy;
        std::shared_ptr<Transfer> transfer;
        /// How libcurl ended the hop, while the transfer still has to look at its body.
        std::optional<CURLcode> code{};
    };

    bool ensureRunning();
    std::shared_ptr<CommandQueue> queue() const;

    void run();
    void startNow(const std::shared_ptr<Transfer>& transfer);
    void addHandle(CURL* easy, Transfer* transfer);
    void goOn(Transfer* transfer);
    void finishHops();
    void finishHop(Transfer* transfer);
    void wait();
    void noteUnexplainedMove();
    void failStalled();
    void reportHeldBack();
    void abort(Transfer* transfer, const Error& error);
    CURL* takeHandle();
    void keepHandle(CURL* easy);

    /// Around the beginning and the end of the thread.
    mutable std::mutex m_mutex;
    bool m_isStopped = false;
    CURLM* m_multi = nullptr;
    std::shared_ptr<CommandQueue> m_queue;
    std::thread m_thread;

    // The thread's own.
    std::unordered_map<Transfer*, ActiveTransfer> m_active;
    std::vector<CURL*> m_idleHandles;
};

} // namespace tljira
