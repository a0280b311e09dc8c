#pragma once

#include "framework/TLJiraJobs.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <chrono>
#include <memory>

namespace tljira {
class Window;
}

namespace jobs {

/// What a caller of either job says beside the document.
struct Order
{
    QPointer<QWidget> parent;
    TLJiraJobs::Ended ended;
    TLJiraJobs::Options options;
};

/// A job, from the call that asked for it until `ended` has been called, which it sees to: it ends with the parent and
/// with the application if not before. It is kept until then.
class Job : public std::enable_shared_from_this<Job>
{
public:
    virtual ~Job();
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    /// Its end has been settled. The callback may be still to come.
    bool isOver() const { return m_isOver; }

protected:
    explicit Job(const Order& order);

    /// To be called by the factory of a subclass. Keeps the job.
    void begin();

    bool has(TLJiraJobs::Option option) const { return m_options.testFlag(option); }
    QWidget* parent() const { return m_parent; }
    /// Whatever lives as long as the job, for connections.
    QObject* context() { return &m_context; }

    /// What has to be in sight before a window may close by itself.
    static constexpr std::chrono::milliseconds doneIsInSight{1500};

    /// The result of an attempt that ended like this.
    static TLJiraJobs::Result failure(const tljira::Error& error);

    /// The job is over; the callback comes in a later turn of the event loop.
    void finish();
    /// The job is over, and so is its window. The callback comes before this returns.
    void endNow();

    /// How the job would end at this moment.
    virtual TLJiraJobs::Result result() const = 0;
    /// As its user closes it.
    virtual void closeWindow() = 0;

private:
    void giveUp();
    void deliver();

    QPointer<QWidget> m_parent;
    TLJiraJobs::Ended m_ended;
    const TLJiraJobs::Options m_options;
    QObject m_context;
    bool m_isOver = false;
    bool m_isDelivered = false;
};

} // namespace jobs
