#include "platform/foundation/settings/BackgroundWriter.h"

#include "platform/foundation/ProcessExit.h"

#include <set>
#include <system_error>
#include <utility>

namespace tljira {

namespace {

constexpr auto LongestWaitForOthers = std::chrono::seconds(1);
constexpr auto LongestWaitAtExit = std::chrono::seconds(5);
constexpr auto BetweenLooks = std::chrono::milliseconds(20);

} // namespace

/// All writers with a thread, stopped when the process begins to exit.
class RunningWriters
{
public:
    static RunningWriters& instance()
    {
        // Never destroyed: a value may be set while the process exits.
        static auto& writers = *new RunningWriters;
        return writers;
    }

    /// False when the process has begun to exit.
    bool add(BackgroundWriter* writer)
    {
        const std::lock_guard lock(m_mutex);
        if (!m_isOver)
            m_writers.insert(writer);
        return !m_isOver;
    }

    void remove(BackgroundWriter* writer)
    {
        const std::lock_guard lock(m_mutex);
        m_writers.erase(writer);
    }

private:
    RunningWriters()
    {
        whenProcessExits([] { instance().stopAll(); });
    }

    void stopAll()
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
        const auto latest = BackgroundWriter::Clock::now() + LongestWaitAtExit;
        for (BackgroundWriter* writer : m_writers)
            writer->stop(latest);
    }

    std::mutex m_mutex;
    std::set<BackgroundWriter*> m_writers;
    bool m_isOver = false;
};

BackgroundWriter::BackgroundWriter(Owner owner)
    : m_owner(std::move(owner))
{
}

BackgroundWriter::~BackgroundWriter()
{
    RunningWriters::instance().remove(this);
    stop(Clock::time_point::max());
}

void BackgroundWriter::ask()
{
    std::unique_lock lock(m_mutex);
    start(lock, true);
    if (lock.owns_lock())
        ++m_asked;
    m_changed.notify_all();
}

void BackgroundWriter::look(std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_mutex);
    if (m_asked != m_done)
        return;
    start(lock, false);
    if (!lock.owns_lock())
        return;
    const auto request = ++m_asked;
    m_changed.notify_all();
    m_changed.wait_for(lock, limit, [&] { return m_done >= request; });
}

bool BackgroundWriter::finish()
{
    std::unique_lock lock(m_mutex);
    const bool isUnderWay = start(lock, true);
    if (!lock.owns_lock())
        return isUnderWay;
    const auto request = ++m_asked;
    m_changed.notify_all();
    lock.unlock();
    return waitFor(request, Clock::time_point::max());
}

/// Leaves the lock when there is no thread to be had: the work is then done already. False when it could not be done.
bool BackgroundWriter::start(std::unique_lock<std::mutex>& lock, bool mustWrite)
{
    if (!m_isRunning && !m_isStopping) {
        lock.unlock();
        const bool mayRun = RunningWriters::instance().add(this);
        lock.lock();
        m_isStopping |= !mayRun;
    }
    if (!m_isRunning && !m_isStopping) {
        try {
            m_thread = std::thread([this] { run(); });
            m_isRunning = true;
        } catch (const std::system_error&) {
            // Done in this call then.
        }
    }
    if (m_isRunning && !m_isStopping) {
        m_mustWrite |= mustWrite;
        return true;
    }
    return runHere(lock, mustWrite);
}

/// Not behind a thread that a disk has kept since before the process began to exit.
bool BackgroundWriter::runHere(std::unique_lock<std::mutex>& lock, bool mustWrite)
{
    const bool mayWork = m_changed.wait_for(lock, LongestWaitForOthers, [this] { return !m_isWorking; });
    if (mayWork)
        doWork(lock, mustWrite);
    lock.unlock();
    return mayWork;
}

/// Nobody else is at work.
void BackgroundWriter::doWork(std::unique_lock<std::mutex>& lock, bool mustWrite)
{
    m_isWorking = true;
    lock.unlock();
    m_owner.work(mustWrite);
    lock.lock();
    m_isWorking = false;
    m_changed.notify_all();
}

void BackgroundWriter::run()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_isStopping || m_asked != m_done; });
        if (m_asked == m_done)
            break;
        const auto request = m_asked;
        const bool mustWrite = std::exchange(m_mustWrite, false);
        m_changed.wait(lock, [this] { return !m_isWorking; });
        doWork(lock, mustWrite);
        m_done = request;
        m_changed.notify_all();
    }
    m_isRunning = false;
    m_changed.notify_all();
}

/// False when the time is over, or when others kept the work waiting for a second.
bool BackgroundWriter::waitFor(unsigned long long request, Clock::time_point latest)
{
    const auto patienceEnds = Clock::now() + LongestWaitForOthers;
    std::unique_lock lock(m_mutex);
    while (m_done < request) {
        const auto now = Clock::now();
        if (now >= latest || (now >= patienceEnds && m_owner.isHeldUp()))
            return false;
        m_changed.wait_for(lock, BetweenLooks, [&] { return m_done >= request; });
    }
    return true;
}

void BackgroundWriter::stop(Clock::time_point latest)
{
    std::unique_lock lock(m_mutex);
    if (!m_isRunning && !m_thread.joinable()) {
        m_isStopping = true;
        return;
    }
    m_mustWrite = true;
    const auto request = ++m_asked;
    m_changed.notify_all();
    lock.unlock();
    waitFor(request, latest);
    m_owner.stopWaiting();
    lock.lock();
    m_isStopping = true;
    m_changed.notify_all();
    while (m_isRunning && Clock::now() < latest)
        m_changed.wait_for(lock, BetweenLooks);
    if (!m_thread.joinable())
        return;
    const bool hasEnded = !m_isRunning;
    lock.unlock();
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
}

} // namespace tljira
