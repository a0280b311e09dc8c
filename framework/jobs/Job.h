#pragma once

#include "client/tasks/SingleEnd.h"
#include "framework/TLJiraJobs.h"

#include <QPointer>

#include <chrono>

namespace jobs {

/// What a caller of either job says beside the document.
struct Order
{
    QPointer<QObject> parent;
    TLJiraJobs::Ended ended;
    TLJiraJobs::Options options;
};

/// A job with a window. It ends with the parent and with the application if not before.
class Job : public client::SingleEnd
{
protected:
    explicit Job(const Order& order);

    /// To be called by the factory of a subclass. Keeps the job.
    void begin();

    bool has(TLJiraJobs::Option option) const { return m_options.testFlag(option); }
    QObject* parent() const { return m_parent; }

    /// What has to be in sight before a window may close by itself.
    static constexpr std::chrono::milliseconds doneIsInSight{1500};

    /// How the job would end at this moment.
    virtual TLJiraJobs::Result result() const = 0;
    /// As its user closes it.
    virtual void closeWindow() = 0;

private:
    void stop() final;
    void tell() final;

    QPointer<QObject> m_parent;
    TLJiraJobs::Ended m_ended;
    const TLJiraJobs::Options m_options;
};

} // namespace jobs
