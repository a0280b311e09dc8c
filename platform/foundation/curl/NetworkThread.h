#pragma once

#include "platform/foundation/curl/Transfer.h"

#include <curl/curl.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

namespace tljira {

/// The thread that owns the handles of libcurl and moves all bytes of a session. It ends with this object or, at the
/// latest, when the process begins to exit, so that no transfer runs on while the libraries below it are taken down.
class NetworkThread
{
public:
    NetworkThread();
    ~NetworkThread();
    NetworkThread(const NetworkThread&) = delete;
    NetworkThread& operator=(const NetworkThread&) = delete;

    /// From any thread, as is `cancel`.
    void start(std::shared_ptr<Transfer> transfer);
    /// Ends the transfer with "cancelled" unless it has already ended.
    void cancel(std::shared_ptr<Transfer> transfer);

    /// Stops moving bytes and waits for the thread. Transfers under way are dropped without a word.
    void stop();

    /// Removes the unfinished files of a thread that was stopped, and leaves everything else to the end of the process.
    void discardFiles();

private:
    struct ActiveTransfer
    {
        CURL* easy;
        std::shared_ptr<Transfer> transfer;
    };

    void post(std::function<void()> command);
    void run();
    void runCommands();
    void startNow(const std::shared_ptr<Transfer>& transfer);
    void finishHops();
    bool awaitsCommandAwake();
    void wait();
    void noteUnexplainedMove();
    void failStalled();
    void reportHeldBack();
    void abort(Transfer* transfer, const Error& error);
    CURL* takeHandle();
    void keepHandle(CURL* easy);

    CURLM* m_multi;
    std::mutex m_mutex;
    std::vector<std::function<void()>> m_commands;
    bool m_isStopping = false;
    bool m_isAsleep = false;
    /// Whether there are commands, to be asked without the mutex.
    std::atomic<bool> m_hasCommands = false;

    // The thread's own.
    bool m_hasJustFinished = false;
    std::unordered_map<Transfer*, ActiveTransfer> m_active;
    std::vector<CURL*> m_idleHandles;

    std::thread m_thread;
};

} // namespace tljira
