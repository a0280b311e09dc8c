#include "platform/foundation/loading/URLSession.h"

#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/loading/curl/CookieJar.h"
#include "platform/foundation/loading/curl/NetworkThread.h"
#include "platform/foundation/loading/curl/TemporaryFile.h"
#include "platform/foundation/loading/curl/Transfer.h"
#include "platform/foundation/loading/curl/URLSessionTaskParts.h"

#include <atomic>
#include <mutex>

namespace tljira {

struct URLSession::Parts
{
    const URLSessionConfiguration configuration;
    const std::weak_ptr<URLSessionDelegate> delegate;
    NetworkThread thread{};
    std::atomic<quint64> tasks = 0;
};

std::shared_ptr<URLSession> URLSession::sessionWithConfiguration(const URLSessionConfiguration& configuration,
                                                                 std::weak_ptr<URLSessionDelegate> delegate)
{
    static std::once_flag isFirst;
    std::call_once(isFirst, [] { GlobalQueue::instance().addOperation(TemporaryFile::removeLeftovers); });
    return std::shared_ptr<URLSession>(new URLSession(configuration, std::move(delegate)));
}

URLSession::URLSession(const URLSessionConfiguration& configuration, std::weak_ptr<URLSessionDelegate> delegate)
    : m_parts(new Parts{configuration, std::move(delegate)})
{
}

URLSession::~URLSession() = default;

const URLSessionConfiguration& URLSession::configuration() const
{
    return m_parts->configuration;
}

std::shared_ptr<URLSessionDataTask> URLSession::dataTaskWithRequest(const URLRequest& request,
                                                                    URLSessionDataTask::Completion completion)
{
    return std::shared_ptr<URLSessionDataTask>(new URLSessionDataTask(std::make_unique<URLSessionTask::Parts>(
        weak_from_this(), URLSessionTask::Parts::Kind::Data, request, ++m_parts->tasks, std::move(completion))));
}

std::shared_ptr<URLSessionDownloadTask> URLSession::downloadTaskWithRequest(const URLRequest& request)
{
    return std::shared_ptr<URLSessionDownloadTask>(new URLSessionDownloadTask(std::make_unique<URLSessionTask::Parts>(
        weak_from_this(), URLSessionTask::Parts::Kind::Download, request, ++m_parts->tasks)));
}

void URLSession::start(const std::shared_ptr<URLSessionTask>& task)
{
    const auto& storage = m_parts->configuration.HTTPCookieStorage;
    const bool isDownload = task->m_parts->kind == URLSessionTask::Parts::Kind::Download;
    auto transfer = std::make_shared<Transfer>(
        task->originalRequest(), m_parts->configuration, storage ? storage->m_parts : nullptr,
        isDownload ? AnswerBody::Destination::File : AnswerBody::Destination::Memory,
        URLSessionTask::Parts::beginDelivery(task, m_parts->delegate.lock()));
    task->m_parts->transfer = transfer;
    m_parts->thread.start(std::move(transfer));
}

void URLSession::cancel(const URLSessionTask& task)
{
    if (auto transfer = task.m_parts->transfer.lock())
        m_parts->thread.cancel(std::move(transfer));
}

void URLSession::endUnstarted(const std::shared_ptr<URLSessionTask>& task)
{
    URLSessionTask::Parts::beginDelivery(task, m_parts->delegate.lock())
        ->transferEnded({makeURLError(URLError::Cancelled), std::nullopt, Data(), nullptr});
}

} // namespace tljira
