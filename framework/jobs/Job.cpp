#include "framework/jobs/Job.h"

#include "client/tasks/DocumentCopy.h"

#include <utility>

namespace jobs {

Job::Job(const Order& order)
    : m_parent(order.parent)
    , m_ended(order.ended)
    , m_options(order.options)
{
}

void Job::begin()
{
    client::DocumentCopy::tidyOnce();
    keep();
    if (m_parent)
        QObject::connect(m_parent, &QObject::destroyed, context(), [this] { giveUp(); });
}

void Job::stop()
{
    closeWindow();
}

void Job::tell()
{
    const TLJiraJobs::Result end = result();
    if (const TLJiraJobs::Ended ended = std::exchange(m_ended, nullptr))
        ended(end);
}

} // namespace jobs
