#include "framework/jobs/Job.h"

#include "client/tasks/DocumentCopy.h"
#include "platform/toolkit/windows/Application.h"

#include <chrono>
#include <utility>

namespace jobs {

namespace {

constexpr std::chrono::milliseconds doneIsInSight(1500);

} // namespace

Job::Job(const Order& order)
    : m_parent(order.parent)
    , m_ended(order.ended)
    , m_options(order.options)
{
    m_closing.setSingleShot(true);
    QObject::connect(&m_closing, &QTimer::timeout, context(), [this] {
        const auto modal = tljira::Application::modalWindow();
        if (modal && modal != window())
            closeSoon();
        else
            closeAfterDone();
    });
}

void Job::begin()
{
    client::DocumentCopy::tidyOnce();
    keep();
    if (m_parent)
        QObject::connect(m_parent, &QObject::destroyed, context(), [this] { giveUp(); });
}

void Job::closeSoon()
{
    m_closing.start(doneIsInSight);
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
