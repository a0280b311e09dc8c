#include "platform/foundation/curl/NetworkThread.h"

#include "platform/foundation/curl/CurlShare.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <utility>

namespace tljira {

namespace {

constexpr std::size_t mostIdleHandles = 4;
constexpr int longestWaitMs = 60'000;
/// About what it takes to put a thread to sleep and wake it again.
constexpr auto shortestSleep = std::chrono::microseconds(50);

/// All running threads, stopped when the process begins to exit.
class RunningThreads
{
public:
    static RunningThreads& instance()
    {
        static auto& threads = *new RunningThreads;
        return threads;
    }

    void add(NetworkThread* thread)
    {
        const std::lock_guard lock(m_mutex);
        m_threads.insert(thread);
    }

    void remove(NetworkThread* thread)
    {
        const std::lock_guard lock(m_mutex);
        m_threads.erase(thread);
    }

private:
    RunningThreads()
    {
        // Registered after libcurl's own libraries were started, hence run before they are taken down.
        startCurl();
        std::atexit([] { instance().stopAll(); });
    }

    void stopAll()
    {
        const std::lock_guard lock(m_mutex);
        for (NetworkThread* thread : m_threads) {
            thread->stop();
            thread->discardFiles();
        }
    }

    std::mutex m_mutex;
    std::set<NetworkThread*> m_threads;
};

} // namespace

NetworkThread::NetworkThread()
{
    RunningThreads::instance().add(this);
    m_multi = curl_multi_init();
    m_thread = std::thread([this] { run(); });
}

NetworkThread::~NetworkThread()
{
    RunningThreads::instance().remove(this);
    stop();
    for (const auto& [transfer, active] : m_active) {
        curl_multi_remove_handle(m_multi, active.easy);
        curl_easy_cleanup(active.easy);
    }
    for (CURL* easy : m_idleHandles)
        curl_easy_cleanup(easy);
    curl_multi_cleanup(m_multi);
}

void NetworkThread::stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
    }
    curl_multi_wakeup(m_multi);
    if (m_thread.joinable())
        m_thread.join();
}

void NetworkThread::discardFiles()
{
    for (const auto& [transfer, active] : m_active)
        transfer->discardBody();
}

void NetworkThread::post(std::function<void()> command)
{
    bool isAsleep = false;
    {
        const std::lock_guard lock(m_mutex);
        m_commands.push_back(std::move(command));
        m_hasCommands = true;
        isAsleep = m_isAsleep;
    }
    if (isAsleep)
        curl_multi_wakeup(m_multi);
}

void NetworkThread::start(std::shared_ptr<Transfer> transfer)
{
    post([this, transfer = std::move(transfer)] { startNow(transfer); });
}

void NetworkThread::cancel(std::shared_ptr<Transfer> transfer)
{
    post([this, transfer = std::move(transfer)] { abort(transfer.get(), makeURLError(URLError::Cancelled)); });
}

void NetworkThread::run()
{
    while (true) {
        {
            const std::lock_guard lock(m_mutex);
            if (m_isStopping)
                break;
        }
        runCommands();
        int running = 0;
        curl_multi_perform(m_multi, &running);
        finishHops();
        failStalled();
        reportHeldBack();
        wait();
    }
}

void NetworkThread::runCommands()
{
    std::vector<std::function<void()>> commands;
    {
        const std::lock_guard lock(m_mutex);
        commands.swap(m_commands);
        m_hasCommands = false;
    }
    for (const auto& command : commands)
        command();
}

void NetworkThread::startNow(const std::shared_ptr<Transfer>& transfer)
{
    CURL* easy = takeHandle();
    if (!transfer->prepareHop(easy)) {
        keepHandle(easy);
        return;
    }
    m_active.emplace(transfer.get(), ActiveTransfer{easy, transfer});
    curl_multi_add_handle(m_multi, easy);
}

void NetworkThread::finishHops()
{
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(m_multi, &left)) {
        CURL* easy = message->easy_handle;
        const CURLcode code = message->data.result;
        Transfer* transfer = nullptr;
        curl_easy_getinfo(easy, CURLINFO_PRIVATE, &transfer);
        curl_multi_remove_handle(m_multi, easy);
        if (transfer->finishHop(code) && transfer->prepareHop(easy)) {
            curl_multi_add_handle(m_multi, easy);
            continue;
        }
        keepHandle(easy);
        m_active.erase(transfer);
        m_hasJustFinished = true;
    }
}

/// An answer is often followed by the next request at once, as when issues are looked up in a row. That is worth a
/// moment's attention when there is nothing else to attend to. True when a command came.
bool NetworkThread::awaitsCommandAwake()
{
    if (!std::exchange(m_hasJustFinished, false) || !m_active.empty())
        return false;
    const auto end = Transfer::Clock::now() + shortestSleep;
    // No yielding: on a busy machine that gives away far more than this moment.
    while (!m_hasCommands && Transfer::Clock::now() < end)
        continue;
    return m_hasCommands;
}

void NetworkThread::wait()
{
    auto timeout = std::chrono::milliseconds(longestWaitMs);
    const auto now = Transfer::Clock::now();
    for (const auto& [transfer, active] : m_active) {
        const auto next = std::min(transfer->deadline(), transfer->reportDue());
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - now);
        timeout = std::clamp(left, std::chrono::milliseconds(0), timeout);
    }
    if (awaitsCommandAwake())
        return;
    {
        const std::lock_guard lock(m_mutex);
        if (m_isStopping || !m_commands.empty())
            return;
        m_isAsleep = true;
    }
    int ready = 0;
    curl_multi_poll(m_multi, nullptr, 0, static_cast<int>(timeout.count()), &ready);
    {
        const std::lock_guard lock(m_mutex);
        m_isAsleep = false;
    }
    if (ready > 0)
        noteUnexplainedMove();
}

/// libcurl tells of a head only line by line, and a line may come slower than the time-out allows. Bytes that arrive
/// while no other transfer is under way are therefore taken for those of the head that is awaited.
void NetworkThread::noteUnexplainedMove()
{
    if (m_active.size() != 1)
        return;
    Transfer* transfer = m_active.begin()->first;
    if (transfer->awaitsHead())
        transfer->noteMove();
}

void NetworkThread::failStalled()
{
    const auto now = Transfer::Clock::now();
    std::vector<Transfer*> stalled;
    for (const auto& [transfer, active] : m_active) {
        if (transfer->deadline() <= now)
            stalled.push_back(transfer);
    }
    for (Transfer* transfer : stalled)
        abort(transfer, makeURLError(URLError::TimedOut));
}

/// What moved just before a transfer came to a halt.
void NetworkThread::reportHeldBack()
{
    for (const auto& [transfer, active] : m_active)
        transfer->reportIfDue();
}

void NetworkThread::abort(Transfer* transfer, const Error& error)
{
    const auto found = m_active.find(transfer);
    if (found == m_active.end())
        return;
    const ActiveTransfer active = found->second;
    m_active.erase(found);
    curl_multi_remove_handle(m_multi, active.easy);
    active.transfer->abort(error);
    keepHandle(active.easy);
}

CURL* NetworkThread::takeHandle()
{
    if (m_idleHandles.empty())
        return curl_easy_init();
    CURL* easy = m_idleHandles.back();
    m_idleHandles.pop_back();
    return easy;
}

void NetworkThread::keepHandle(CURL* easy)
{
    CurlShare::reset(easy);
    if (m_idleHandles.size() < mostIdleHandles)
        m_idleHandles.push_back(easy);
    else
        curl_easy_cleanup(easy);
}

} // namespace tljira
