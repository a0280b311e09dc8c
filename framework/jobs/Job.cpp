#include "framework/jobs/Job.h"

#include "framework/jobs/DocumentCopy.h"
#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/MainQueue.h"
#include "upload/UploadTrouble.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>
#include <vector>

namespace jobs {

namespace {

std::vector<std::shared_ptr<Job>>& underWay()
{
    static std::vector<std::shared_ptr<Job>> all;
    return all;
}

} // namespace

Job::Job(const Order& order)
    : m_parent(order.parent)
    , m_ended(order.ended)
    , m_options(order.options)
{
}

Job::~Job() = default;

void Job::begin()
{
    [[maybe_unused]] static const bool hasTidied = [] {
        tljira::GlobalQueue::instance().addOperation(DocumentCopy::removeLeftovers);
        return true;
    }();
    underWay().push_back(shared_from_this());
    if (m_parent)
        QObject::connect(m_parent, &QObject::destroyed, &m_context, [this] { giveUp(); });
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &m_context, [this] { endNow(); });
    // Without an event loop nobody is about to quit.
    [[maybe_unused]] static const bool endsWithApplication = [] {
        qAddPostRoutine([] {
            for (const auto& job : std::vector(underWay()))
                job->endNow();
        });
        return true;
    }();
}

void Job::giveUp()
{
    const auto self = shared_from_this();
    finish();
    closeWindow();
}

void Job::endNow()
{
    const auto self = shared_from_this();
    giveUp();
    deliver();
}

TLJiraJobs::Result Job::failure(const tljira::Error& error)
{
    using Outcome = TLJiraJobs::Outcome;
    TLJiraJobs::Result result;
    const bool isCancelled = error.domain == QLatin1String(tljira::URLErrorDomain) &&
                             error.code == static_cast<qint64>(tljira::URLError::Cancelled);
    result.outcome = isCancelled ? Outcome::Cancelled : Outcome::Failed;
    if (!isCancelled) {
        result.error = error;
        result.serverSentence = serverSentence(error);
    }
    return result;
}

void Job::finish()
{
    if (std::exchange(m_isOver, true))
        return;
    tljira::MainQueue::instance().addOperation([self = shared_from_this()] { self->deliver(); });
}

void Job::deliver()
{
    if (std::exchange(m_isDelivered, true))
        return;
    m_isOver = true;
    const auto self = shared_from_this();
    std::erase(underWay(), self);
    const TLJiraJobs::Result end = result();
    if (const TLJiraJobs::Ended ended = std::exchange(m_ended, nullptr))
        ended(end);
}

} // namespace jobs
