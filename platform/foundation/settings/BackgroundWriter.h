#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace tljira {

/// Brings what is in memory to a disk, on a thread of its own, so that nobody else waits for the disk. The thread
/// begins with the first request and ends with this object or when the process begins to exit; what was asked for is
/// done before, unless the disk takes too long. Afterwards, and where the system has no thread to give, the work is
/// done in the calls that ask for it. From any thread.
class BackgroundWriter
{
public:
    /// What the writer asks of its owner.
    struct Owner
    {
        /// Brings memory and disk together. Never runs twice at a time. With `mustWrite` what the disk has refused is
        /// tried again; readers alone do not ask for that.
        std::function<void(bool mustWrite)> work;
        /// Whether `work` waits for another process.
        std::function<bool()> isHeldUp;
        /// `work` is not to wait for other processes from now on.
        std::function<void()> stopWaiting;
    };

    explicit BackgroundWriter(Owner owner);
    ~BackgroundWriter();
    BackgroundWriter(const BackgroundWriter&) = delete;
    BackgroundWriter& operator=(const BackgroundWriter&) = delete;

    /// The work is done soon, once for all requests that come before it begins.
    void ask();
    /// Has the thread look at the disk, and waits so long for it unless the thread has work already.
    void look(std::chrono::milliseconds limit);
    /// Does the work once more and waits for the disk, but for another process, or for others that do the work in their
    /// own calls, no longer than a second; false then.
    bool finish();

private:
    friend class RunningWriters;
    using Clock = std::chrono::steady_clock;

    bool start(std::unique_lock<std::mutex>& lock, bool mustWrite);
    void run();
    bool runHere(std::unique_lock<std::mutex>& lock, bool mustWrite);
    void doWork(std::unique_lock<std::mutex>& lock, bool mustWrite);
    bool waitFor(unsigned long long request, Clock::time_point latest);
    void stop(Clock::time_point latest);

    const Owner m_owner;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    unsigned long long m_asked = 0;
    unsigned long long m_done = 0;
    bool m_mustWrite = false;
    bool m_isStopping = false;
    bool m_isRunning = false;
    /// The owner is at work, on whichever thread.
    bool m_isWorking = false;
    std::thread m_thread;
};

} // namespace tljira
