#include "platform/foundation/loading/curl/NetworkThread.h"

#include "platform/foundation/ProcessExit.h"
#include "platform/foundation/loading/curl/CurlShare.h"

#include <algorithm>
#include <set>
#include <system_error>
#include <utility>

namespace tljira {

namespace {

constexpr std::size_t mostIdleHandles = 4;
/// Who waits with libcurl is woken through a socket, which may fail. What is asked during a transfer then waits so
/// long.
constexpr auto longestWait = std::chrono::milliseconds(1000);
constexpr auto pauseWithoutPoll = std::chrono::milliseconds(10);

/// All running threads, stopped when the process begins to exit.
class RunningThreads
{
public:
    static RunningThreads& instance()
    {
        static auto& threads = *new RunningThreads;
        return threads;
    }

    /// False when the process has begun to exit.
    bool add(NetworkThread* thread)
    {
        const std::lock_guard lock(m_mutex);
        if (!m_isOver)
            m_threads.insert(thread);
        return !m_isOver;
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
        whenProcessExits([] { instance().stopAll(); });
    }

    void stopAll()
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
        for (NetworkThread* thread : m_threads) {
            thread->stop();
            thread->discardFiles();
        }
    }

    std::mutex m_mutex;
    std::set<NetworkThread*> m_threads;
    bool m_isOver = false;
};

} // namespace

NetworkThread::NetworkThread()
{
    if (!RunningThreads::instance().add(this))
        stop();
}

NetworkThread::~NetworkThread()
{
    RunningThreads::instance().remove(this);
    stop();
    if (m_queue)
        m_queue->close();
    for (const auto& [transfer, active] : m_active) {
        curl_multi_remove_handle(m_multi, active.easy);
        curl_easy_cleanup(active.easy);
    }
    for (CURL* easy : m_idleHandles)
        curl_easy_cleanup(easy);
    curl_multi_cleanup(m_multi);
}

bool NetworkThread::ensureRunning()
{
    const std::lock_guard lock(m_mutex);
    if (m_thread.joinable() || m_isStopped)
        return true;
    if (!m_multi && startCurl())
        m_multi = curl_multi_init();
    if (!m_multi)
        return false;
    if (!m_queue)
        m_queue = std::make_shared<CommandQueue>(m_multi);
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

std::shared_ptr<CommandQueue> NetworkThread::queue() const
{
    const std::lock_guard lock(m_mutex);
    return m_queue;
}

void NetworkThread::stop()
{
    std::thread thread; // Waited for without the lock: the thread may wait for a task that waits for the lock.
    {
        const std::lock_guard lock(m_mutex);
        m_isStopped = true;
        if (!m_thread.joinable())
            return;
        m_queue->stop();
        thread = std::move(m_thread);
    }
    thread.join();
}

void NetworkThread::discardFiles()
{
    for (const auto& [transfer, active] : m_active)
        transfer->discardBody();
}

void NetworkThread::start(std::shared_ptr<Transfer> transfer)
{
    if (!ensureRunning())
        transfer->abort(makeURLError(URLError::ResourceUnavailable));
    else if (const auto commands = queue())
        commands->post([this, transfer = std::move(transfer)] { startNow(transfer); });
}

void NetworkThread::cancel(std::shared_ptr<Transfer> transfer)
{
    transfer->giveUp();
    if (const auto commands = queue())
        commands->post(
            [this, transfer = std::move(transfer)] { abort(transfer.get(), makeURLError(URLError::Cancelled)); });
}

void NetworkThread::run()
{
    while (!m_queue->isStopped()) {
        for (const auto& command : m_queue->take())
            command();
        int running = 0;
        curl_multi_perform(m_multi, &running);
        finishHops();
        failStalled();
        reportHeldBack();
        wait();
    }
}

void NetworkThread::startNow(const std::shared_ptr<Transfer>& transfer)
{
    CURL* easy = takeHandle();
    if (!easy) {
        transfer->abort(makeURLError(URLError::ResourceUnavailable));
        return;
    }
    transfer->setBodyCallBack([this, commands = m_queue, weak = std::weak_ptr(transfer)] {
        commands->post([this, weak] {
            if (const auto waiting = weak.lock())
                goOn(waiting.get());
        });
    });
    if (!transfer->prepareHop(easy)) {
        keepHandle(easy);
        return;
    }
    m_active.emplace(transfer.get(), ActiveTransfer{easy, transfer});
    addHandle(easy, transfer.get());
}

void NetworkThread::addHandle(CURL* easy, Transfer* transfer)
{
    if (curl_multi_add_handle(m_multi, easy) != CURLM_OK)
        abort(transfer, makeURLError(URLError::ResourceUnavailable));
}

/// The body has what it was waited for.
void NetworkThread::goOn(Transfer* transfer)
{
    const auto found = m_active.find(transfer);
    if (found == m_active.end())
        return;
    if (found->second.code)
        finishHop(transfer);
    else
        transfer->resumeBody();
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
        m_active.at(transfer).code = code;
        finishHop(transfer);
    }
}

void NetworkThread::finishHop(Transfer* transfer)
{
    ActiveTransfer& active = m_active.at(transfer);
    if (transfer->mustAwaitBody(*active.code))
        return;
    CURL* easy = active.easy;
    const CURLcode code = *std::exchange(active.code, std::nullopt);
    if (transfer->finishHop(code) && transfer->prepareHop(easy)) {
        addHandle(easy, transfer);
        return;
    }
    keepHandle(easy);
    m_active.erase(transfer);
}

void NetworkThread::wait()
{
    if (m_active.empty()) {
        m_queue->wait();
        return;
    }
    auto timeout = longestWait;
    const auto now = Transfer::Clock::now();
    for (const auto& [transfer, active] : m_active) {
        const auto next = std::min(transfer->deadline(), transfer->reportDue());
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - now);
        timeout = std::clamp(left, std::chrono::milliseconds(0), timeout);
    }
    if (!m_queue->beginWait())
        return;
    int ready = 0;
    const CURLMcode code = curl_multi_poll(m_multi, nullptr, 0, static_cast<int>(timeout.count()), &ready);
    m_queue->endWait();
    if (ready > 0)
        noteUnexplainedMove();
    // The system does not say when something moves: what is under way is looked at now and then.
    if (code != CURLM_OK)
        std::this_thread::sleep_for(pauseWithoutPoll);
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
