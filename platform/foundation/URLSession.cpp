#include "platform/foundation/URLSession.h"

#include "platform/foundation/curl/NetworkThread.h"
#include "platform/foundation/curl/TaskRelay.h"

namespace platform {

std::shared_ptr<URLSession> URLSession::sessionWithConfiguration(const URLSessionConfiguration& configuration,
                                                                 std::weak_ptr<URLSessionDelegate> delegate)
{
    return std::shared_ptr<URLSession>(new URLSession(configuration, std::move(delegate)));
}

URLSession::URLSession(const URLSessionConfiguration& configuration, std::weak_ptr<URLSessionDelegate> delegate)
    : m_configuration(configuration)
    , m_delegate(std::move(delegate))
    , m_thread(std::make_unique<NetworkThread>())
{
}

URLSession::~URLSession() = default;

std::shared_ptr<URLSessionDataTask> URLSession::dataTaskWithRequest(const URLRequest& request,
                                                                    URLSessionDataTask::Completion completion)
{
    return std::shared_ptr<URLSessionDataTask>(
        new URLSessionDataTask(weak_from_this(), request, ++m_tasks, std::move(completion)));
}

std::shared_ptr<URLSessionDownloadTask> URLSession::downloadTaskWithRequest(const URLRequest& request)
{
    return std::shared_ptr<URLSessionDownloadTask>(new URLSessionDownloadTask(weak_from_this(), request, ++m_tasks));
}

std::shared_ptr<Transfer> URLSession::start(const std::shared_ptr<URLSessionTask>& task)
{
    const bool isDownload = std::dynamic_pointer_cast<URLSessionDownloadTask>(task) != nullptr;
    auto transfer =
        std::make_shared<Transfer>(task->originalRequest(), m_configuration,
                                   isDownload ? AnswerBody::Destination::File : AnswerBody::Destination::Memory,
                                   std::make_shared<TaskRelay>(task, weak_from_this(), m_delegate));
    m_thread->start(transfer);
    return transfer;
}

void URLSession::cancel(const std::shared_ptr<Transfer>& transfer)
{
    m_thread->cancel(transfer);
}

void URLSession::endUnstarted(const std::shared_ptr<URLSessionTask>& task)
{
    const auto relay = std::make_shared<TaskRelay>(task, weak_from_this(), m_delegate);
    relay->transferEnded({makeURLError(URLError::Cancelled), std::nullopt, Data(), nullptr});
}

} // namespace platform
